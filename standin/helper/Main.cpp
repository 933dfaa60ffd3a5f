// BrennvarWow64.exe, the stand-in for the helper that serves 32-bit programs: it answers every record on its pipe
// by the same record of kind 100, until the event "BrennvarWow64StandInStop" is set or a record of code 24 comes.
// Every start, also one that comes to nothing, adds a byte to the file "BrennvarWow64.starts" beside the program.
// The exit code is 0, or 1 when its pipe could not be made.
#include <string>

#include "base/Handles_win.h"
#include "ipc/ActivityQueue.h"

namespace brennvar::standin {
namespace {

constexpr char kStopEventName[] = "BrennvarWow64StandInStop";

void CountStart() {
    char program[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, program, MAX_PATH);
    std::string path = program;
    path = path.substr(0, path.rfind('\\') + 1) + "BrennvarWow64.starts";
    const UniqueFile file(::CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    ::WriteFile(file.Get(), "+", 1, &written, nullptr);
}

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
    CountStart();
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
