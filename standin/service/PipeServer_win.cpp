#include "service/PipeServer_win.h"

#include <array>
#include <utility>

namespace brennvar::standin {
namespace {

constexpr DWORD kBufferSize = 65536;
// A client that stays and sends nothing must not keep the others away for ever.
constexpr DWORD kClientPatienceMilliseconds = 5000;

UniqueFile MakePipe(const char* name) {
    // A null access list: everyone may connect.
    SECURITY_DESCRIPTOR descriptor;
    ::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    ::SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE);
    SECURITY_ATTRIBUTES attributes{sizeof(attributes), &descriptor, FALSE};
    return UniqueFile(
        ::CreateNamedPipeA(name, PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
                           PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
                           kBufferSize, kBufferSize, 0, &attributes));
}

}  // namespace

PipeServer::PipeServer(PipeService service, PipeWorld world)
    : m_service(std::move(service)), m_world(world), m_done(::CreateEventA(nullptr, TRUE, FALSE, nullptr)) {}

PipeServer::~PipeServer() {
    if (m_thread.joinable()) m_thread.join();
}

bool PipeServer::Start() {
    m_pipe = MakePipe(m_service.name);
    if (!m_pipe) return false;
    m_thread = std::thread([this] { Run(); });
    return true;
}

void PipeServer::Run() {
    while (!m_world.stop.Requested()) {
        if (WaitForClient()) ServeClient();
        ::DisconnectNamedPipe(m_pipe.Get());
    }
}

std::optional<DWORD> PipeServer::Finish(BOOL done, OVERLAPPED& operation, DWORD patienceMilliseconds) {
    if (!done && ::GetLastError() != ERROR_IO_PENDING) return std::nullopt;
    const std::array<HANDLE, 2> events{operation.hEvent, m_world.stop.Event()};
    const DWORD first =
        ::WaitForMultipleObjects(static_cast<DWORD>(events.size()), events.data(), FALSE, patienceMilliseconds);
    if (first != WAIT_OBJECT_0) ::CancelIoEx(m_pipe.Get(), &operation);
    DWORD moved = 0;
    if (!::GetOverlappedResult(m_pipe.Get(), &operation, &moved, TRUE)) return std::nullopt;
    return moved;
}

bool PipeServer::WaitForClient() {
    OVERLAPPED operation{};
    operation.hEvent = m_done.Get();
    const BOOL done = ::ConnectNamedPipe(m_pipe.Get(), &operation);
    const DWORD error = ::GetLastError();
    // A client may have come already, or even have come, written and gone: its record can still be read.
    if (!done && (error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA)) return true;
    ::SetLastError(error);
    return Finish(done, operation, INFINITE).has_value();
}

void PipeServer::ServeClient() {
    std::vector<std::byte> buffer(kBufferSize);
    for (;;) {
        OVERLAPPED reading{};
        reading.hEvent = m_done.Get();
        const BOOL read = ::ReadFile(m_pipe.Get(), buffer.data(), kBufferSize, nullptr, &reading);
        const auto size = Finish(read, reading, kClientPatienceMilliseconds);
        if (!size) return;  // the client has left, usually
        const std::span record(buffer.data(), *size);
        m_world.journal.Record(m_service.channel, record);
        const auto answer = m_service.handle(record);
        m_world.progress.Add(m_service.channel);
        if (!answer) continue;
        if (m_service.slowMilliseconds != 0 && m_world.stop.Sleep(m_service.slowMilliseconds)) return;
        OVERLAPPED writing{};
        writing.hEvent = m_done.Get();
        const BOOL written =
            ::WriteFile(m_pipe.Get(), answer->data(), static_cast<DWORD>(answer->size()), nullptr, &writing);
        if (!Finish(written, writing, kClientPatienceMilliseconds)) return;
    }
}

}  // namespace brennvar::standin
