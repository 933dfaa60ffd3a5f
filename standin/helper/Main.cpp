// BrennvarWow64.exe, the stand-in for the helper that serves 32-bit programs: it answers every record on its pipe
// by the same record of kind 100, until the event "BrennvarWow64StandInStop" is set or a record of code 24 comes.
// The exit code is 0, or 1 when its pipe could not be made.
#include "base/Handles_win.h"
#include "ipc/ActivityQueue.h"

namespace brennvar::standin {
namespace {

constexpr char kStopEventName[] = "BrennvarWow64StandInStop";

// Waits for the end of what began with this result, or for the stop.
bool Finish(HANDLE pipe, HANDLE stop, BOOL done, OVERLAPPED& operation) {
    if (!done && ::GetLastError() != ERROR_IO_PENDING) return false;
    const HANDLE events[] = {operation.hEvent, stop};
    if (::WaitForMultipleObjects(2, events, FALSE, INFINITE) != WAIT_OBJECT_0) ::CancelIoEx(pipe, &operation);
    DWORD size = 0;
    return ::GetOverlappedResult(pipe, &operation, &size, TRUE) != FALSE;
}

// One client. False when it has told the helper to end.
bool Serve(HANDLE pipe, HANDLE stop, HANDLE done) {
    ActivityQueueMessage message{};
    OVERLAPPED operation{};
    operation.hEvent = done;
    const BOOL isConnected = ::ConnectNamedPipe(pipe, &operation);
    const DWORD error = ::GetLastError();
    const bool isThere = !isConnected && (error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA);
    ::SetLastError(error);
    if (!isThere && !Finish(pipe, stop, isConnected, operation)) return true;
    operation = {};
    operation.hEvent = done;
    if (!Finish(pipe, stop, ::ReadFile(pipe, &message, sizeof message, nullptr, &operation), operation))
        return true;
    if (message.kind == ActivityKind::Wake) return false;
    message.kind = ActivityKind::Answered;
    operation = {};
    operation.hEvent = done;
    (void)Finish(pipe, stop, ::WriteFile(pipe, &message, sizeof message, nullptr, &operation), operation);
    return true;
}

int Run() {
    const UniqueEvent stop(::CreateEventA(nullptr, TRUE, FALSE, kStopEventName));
    const UniqueEvent done(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
    const UniqueFile pipe(::CreateNamedPipeA(
        kHelperPipeName, PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
        PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
        sizeof(ActivityQueueMessage), sizeof(ActivityQueueMessage), 0, nullptr));
    if (!stop || !done || !pipe) return 1;
    ::ResetEvent(stop.Get());
    bool goesOn = true;
    while (goesOn && ::WaitForSingleObject(stop.Get(), 0) != WAIT_OBJECT_0) {
        goesOn = Serve(pipe.Get(), stop.Get(), done.Get());
        ::DisconnectNamedPipe(pipe.Get());
    }
    return 0;
}

}  // namespace
}  // namespace brennvar::standin

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return brennvar::standin::Run();
}
