#include "ipc/RecordPipe_win.h"

#include <utility>

namespace brennvar {
namespace {

constexpr auto kPatienceMs = static_cast<DWORD>(WinRecordPipe::kPatience.count());

DWORD ErrorOf(BOOL done) {
    return done ? ERROR_SUCCESS : ::GetLastError();
}

void CALLBACK CancelFlush(void* pipe, BOOLEAN) {
    ::CancelIoEx(pipe, nullptr);
}

}  // namespace

WinRecordPipe::WinRecordPipe(std::string name, DWORD bufferSize)
    : m_name(std::move(name)), m_bufferSize(bufferSize) {}

bool WinRecordPipe::Create() {
    // A null access list: every user of this machine may connect.
    SECURITY_DESCRIPTOR descriptor{};
    if (!::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !::SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE)) {
        return false;
    }
    SECURITY_ATTRIBUTES attributes{
        .nLength = sizeof attributes, .lpSecurityDescriptor = &descriptor, .bInheritHandle = FALSE};
    m_pipe.Reset(::CreateNamedPipeA(
        m_name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
        PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1, m_bufferSize,
        m_bufferSize, NMPWAIT_WAIT_FOREVER, &attributes));
    // Wine does not know the flag. An instance of a pipe that somebody else has made has that one's limit.
    DWORD limit = 0;
    if (!::GetNamedPipeInfo(m_pipe.Get(), nullptr, nullptr, nullptr, &limit) || limit != 1) m_pipe.Reset();
    return m_pipe && m_done && m_stop;
}

OVERLAPPED WinRecordPipe::NewOperation() const {
    OVERLAPPED operation{};
    operation.hEvent = m_done.Get();
    return operation;
}

std::optional<DWORD> WinRecordPipe::Finish(DWORD error, OVERLAPPED& operation, DWORD patienceMs) {
    // What failed at once has nothing to collect.
    if (error != ERROR_SUCCESS && error != ERROR_IO_PENDING) return std::nullopt;
    if (error == ERROR_IO_PENDING) {
        // The stop comes second: what is done already counts.
        const HANDLE events[] = {m_done.Get(), m_stop.Get()};
        if (::WaitForMultipleObjects(2, events, FALSE, patienceMs) != WAIT_OBJECT_0) {
            ::CancelIoEx(m_pipe.Get(), &operation);
        }
    }
    DWORD size = 0;
    if (!::GetOverlappedResult(m_pipe.Get(), &operation, &size, TRUE)) return std::nullopt;
    return size;
}

bool WinRecordPipe::Accept() {
    OVERLAPPED operation = NewOperation();
    const DWORD error = ErrorOf(::ConnectNamedPipe(m_pipe.Get(), &operation));
    // A client may have come already, or even have come, written and gone: its record can still be read.
    if (error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA) return true;
    return Finish(error, operation, INFINITE).has_value();
}

std::size_t WinRecordPipe::Read(std::span<std::byte> buffer) {
    OVERLAPPED operation = NewOperation();
    const DWORD error =
        ErrorOf(::ReadFile(m_pipe.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), nullptr, &operation));
    return Finish(error, operation, kPatienceMs).value_or(0);
}

bool WinRecordPipe::Write(std::span<const std::byte> record) {
    OVERLAPPED operation = NewOperation();
    const DWORD error =
        ErrorOf(::WriteFile(m_pipe.Get(), record.data(), static_cast<DWORD>(record.size()), nullptr, &operation));
    return Finish(error, operation, kPatienceMs) == record.size();
}

void WinRecordPipe::Flush() {
    // The call waits for the client and takes neither a limit nor an event itself. It is cancelled again and again:
    // once would be nothing if the stop came just before it.
    HANDLE wait = nullptr;
    if (!::RegisterWaitForSingleObject(&wait, m_stop.Get(), &CancelFlush, m_pipe.Get(), kPatienceMs,
                                       WT_EXECUTEINWAITTHREAD)) {
        return;
    }
    ::FlushFileBuffers(m_pipe.Get());
    ::UnregisterWaitEx(wait, INVALID_HANDLE_VALUE);
}

void WinRecordPipe::Disconnect() {
    ::DisconnectNamedPipe(m_pipe.Get());
}

}  // namespace brennvar
