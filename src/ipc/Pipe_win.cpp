#include "ipc/Pipe_win.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>

#include "base/Handles_win.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using SteadyClock = std::chrono::steady_clock;

// How long a wait of the system lasts before the stop is looked at again.
constexpr milliseconds kWaitSlice{50};

// Room for a descriptor or a token's answer with one identifier in it.
struct SidBuffer {
    alignas(void*) std::array<BYTE, 256> bytes{};
    static constexpr DWORD kSize = 256;
};

// To whom belongs what this user makes: the token's owner. Windows lets that be the user or the administrators;
// Wine makes it the group of all users. Both are those of the process for as long as it lives.
struct Makers {
    SidBuffer user;
    SidBuffer owner;
};

std::optional<Makers> ReadMakers() {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened)) return std::nullopt;
    const UniqueToken token(opened);
    SidBuffer user;
    SidBuffer owner;
    DWORD size = 0;
    Makers makers;
    // The answers point into their buffers.
    if (!::GetTokenInformation(token.Get(), TokenUser, user.bytes.data(), SidBuffer::kSize, &size) ||
        !::CopySid(SidBuffer::kSize, makers.user.bytes.data(),
                   reinterpret_cast<const TOKEN_USER*>(user.bytes.data())->User.Sid) ||
        !::GetTokenInformation(token.Get(), TokenOwner, owner.bytes.data(), SidBuffer::kSize, &size) ||
        !::CopySid(SidBuffer::kSize, makers.owner.bytes.data(),
                   reinterpret_cast<const TOKEN_OWNER*>(owner.bytes.data())->Owner)) {
        return std::nullopt;
    }
    return makers;
}

// Reads them once, since the service is called once a second; again when that failed. On any thread.
bool IsMadeByThisUser(PSID owner) {
    static std::mutex s_mutex;
    static std::optional<Makers> s_makers;
    const std::scoped_lock lock(s_mutex);
    if (!s_makers) s_makers = ReadMakers();
    if (!s_makers) return false;
    return ::EqualSid(owner, s_makers->user.bytes.data()) || ::EqualSid(owner, s_makers->owner.bytes.data());
}

// Who made the pipe: the service, which runs as the system or an administrator, or a program of this user's. Anyone
// may take the name of a pipe while the service is away. No owner is nobody's.
bool IsBelieved(HANDLE pipe) {
    SidBuffer descriptor;
    DWORD size = 0;
    PSID owner = nullptr;
    BOOL isDefaulted = FALSE;
    if (!::GetKernelObjectSecurity(pipe, OWNER_SECURITY_INFORMATION, descriptor.bytes.data(), SidBuffer::kSize,
                                   &size) ||
        !::GetSecurityDescriptorOwner(descriptor.bytes.data(), &owner, &isDefaulted) || !owner) {
        return false;
    }
    return ::IsWellKnownSid(owner, WinLocalSystemSid) || ::IsWellKnownSid(owner, WinBuiltinAdministratorsSid) ||
           IsMadeByThisUser(owner);
}

// What is left until the end, at most one slice; zero when nothing is left.
milliseconds NextSlice(SteadyClock::time_point end) {
    const auto left = std::chrono::ceil<milliseconds>(end - SteadyClock::now());
    return std::clamp(left, milliseconds(0), kWaitSlice);
}

class WinPipeConnection final : public PipeConnection {
public:
    WinPipeConnection(UniqueFile pipe, UniqueEvent event, const StopSignal& stop)
        : m_pipe(std::move(pipe)), m_event(std::move(event)), m_stop(stop) {}

    [[nodiscard]] bool SetMessageMode() override {
        DWORD mode = PIPE_READMODE_MESSAGE;
        return ::SetNamedPipeHandleState(m_pipe.Get(), &mode, nullptr, nullptr) != FALSE;
    }

    [[nodiscard]] PipeOutcome Write(std::span<const std::byte> bytes, milliseconds pendingLimit) override {
        OVERLAPPED overlapped = NewOverlapped();
        const BOOL started =
            ::WriteFile(m_pipe.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &overlapped);
        const DWORD error = started ? ERROR_SUCCESS : ::GetLastError();
        const Completion end = Complete(error, overlapped, pendingLimit);
        if (end.outcome == PipeOutcome::Done && end.size != bytes.size()) return PipeOutcome::Failed;
        return end.outcome;
    }

    [[nodiscard]] PipeOutcome Transact(std::span<const std::byte> request, std::span<std::byte> answer,
                                       std::size_t& receivedSize, milliseconds pendingLimit) override {
        OVERLAPPED overlapped = NewOverlapped();
        // The call only reads the request, though its type does not say so.
        auto* requestData = const_cast<std::byte*>(request.data());
        const BOOL started =
            ::TransactNamedPipe(m_pipe.Get(), requestData, static_cast<DWORD>(request.size()), answer.data(),
                                static_cast<DWORD>(answer.size()), nullptr, &overlapped);
        const DWORD error = started ? ERROR_SUCCESS : ::GetLastError();
        Completion end = Complete(error, overlapped, pendingLimit);
        if (end.error == ERROR_MORE_DATA) {  // a longer answer: the buffer is full, the rest is of no interest
            end = {.outcome = PipeOutcome::Done, .error = ERROR_SUCCESS, .size = answer.size()};
        }
        if (end.outcome == PipeOutcome::Done) receivedSize = std::min(end.size, answer.size());
        return end.outcome;
    }

private:
    struct Completion {
        PipeOutcome outcome = PipeOutcome::Failed;
        DWORD error = ERROR_SUCCESS;
        std::size_t size = 0;  // bytes moved
    };

    [[nodiscard]] OVERLAPPED NewOverlapped() const {
        OVERLAPPED overlapped{};
        overlapped.hEvent = m_event.Get();  // each call resets it
        return overlapped;
    }

    // The end of a call that began with the given error. Until this returns the system may use the caller's
    // buffers.
    [[nodiscard]] Completion Complete(DWORD error, OVERLAPPED& overlapped, milliseconds pendingLimit) {
        // A call that failed at once has nothing to collect: waiting for it would never end.
        if (error != ERROR_SUCCESS && error != ERROR_IO_PENDING) return {.error = error};
        const bool isCancelled = error == ERROR_IO_PENDING && !WaitUntilSignalled(pendingLimit);
        // Finds nothing to cancel when the call completes at this very moment; the result then counts.
        if (isCancelled) ::CancelIoEx(m_pipe.Get(), &overlapped);
        DWORD size = 0;
        const BOOL done = ::GetOverlappedResult(m_pipe.Get(), &overlapped, &size, TRUE);
        const DWORD endError = done ? ERROR_SUCCESS : ::GetLastError();
        if (done) return {.outcome = PipeOutcome::Done, .size = size};
        if (isCancelled && endError == ERROR_OPERATION_ABORTED) {
            // The next transaction would get the late answer to this one.
            m_pipe.Reset();
            return {.outcome = PipeOutcome::TimedOut, .error = endError};
        }
        return {.error = endError};
    }

    // False at the limit and when the stop is requested.
    [[nodiscard]] bool WaitUntilSignalled(milliseconds limit) const {
        const auto end = SteadyClock::now() + limit;
        for (;;) {
            const milliseconds slice = NextSlice(end);
            if (::WaitForSingleObject(m_event.Get(), static_cast<DWORD>(slice.count())) == WAIT_OBJECT_0)
                return true;
            if (slice == milliseconds(0) || m_stop.Requested()) return false;
        }
    }

    UniqueFile m_pipe;
    UniqueEvent m_event;
    const StopSignal& m_stop;
};

}  // namespace

bool WinPipeConnector::WaitForInstance(const std::string& name, milliseconds limit) {
    const auto end = SteadyClock::now() + limit;
    while (!m_stop.Requested()) {
        // 0 would mean the time-out that the server chose.
        const milliseconds slice = std::max(NextSlice(end), milliseconds(1));
        if (::WaitNamedPipeA(name.c_str(), static_cast<DWORD>(slice.count()))) return true;
        if (::GetLastError() != ERROR_SEM_TIMEOUT) return false;  // no such pipe
        if (SteadyClock::now() >= end) return false;
    }
    return false;
}

OpenedPipe WinPipeConnector::Open(const std::string& name) {
    // A null access list: everyone may use what is opened here.
    SECURITY_DESCRIPTOR descriptor{};
    if (!::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !::SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE)) {
        return {};
    }
    SECURITY_ATTRIBUTES attributes{
        .nLength = sizeof attributes, .lpSecurityDescriptor = &descriptor, .bInheritHandle = TRUE};
    UniqueEvent event(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
    if (!event) return {};
    // Whoever serves the pipe may see who calls, and not act in his name.
    UniqueFile pipe(::CreateFileA(
        name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, &attributes, OPEN_EXISTING,
        FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OVERLAPPED | SECURITY_SQOS_PRESENT | SECURITY_IDENTIFICATION, nullptr));
    // The service lets every user call: who is kept out is kept out by somebody else.
    if (!pipe) return {.isForeign = ::GetLastError() == ERROR_ACCESS_DENIED};
    if (!IsBelieved(pipe.Get())) return {.isForeign = true};
    return {.connection = std::make_unique<WinPipeConnection>(std::move(pipe), std::move(event), m_stop)};
}

}  // namespace brennvar
