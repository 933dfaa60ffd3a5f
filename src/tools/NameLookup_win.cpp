#include "tools/NameLookup_win.h"

#include <ws2tcpip.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

#include "base/Windows_win.h"
#include "tools/SocketError.h"

namespace brennvar {
namespace {

// Between two looks at the stop signal; a cancelled wait ends within 100 ms.
constexpr std::chrono::milliseconds kSlice{20};

struct Found {
    std::uint32_t error = 0;
    Ipv4 address = 0;
};

// Shared by the look-up and whoever waits for it: the one that goes last frees it.
class PendingLookup {
public:
    void Finish(const Found& found) {
        {
            const std::lock_guard lock(m_mutex);
            m_found = found;
        }
        m_changed.notify_all();
    }
    [[nodiscard]] std::optional<Found> WaitFor(std::chrono::milliseconds duration) {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, duration, [this] { return m_found.has_value(); });
        return m_found;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<Found> m_found;
};

Found AskSystem(const std::string& host) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (const int error = ::getaddrinfo(host.c_str(), nullptr, &hints, &list); error != 0) {
        return {.error = static_cast<std::uint32_t>(error), .address = 0};
    }
    Found found{.error = kErrorHostNotFound, .address = 0};
    if (list != nullptr && list->ai_addr != nullptr && list->ai_addrlen >= sizeof(sockaddr_in)) {
        found = {.error = 0, .address = reinterpret_cast<const sockaddr_in*>(list->ai_addr)->sin_addr.s_addr};
    }
    ::freeaddrinfo(list);
    return found;
}

void Run(const std::shared_ptr<PendingLookup>& pending, const std::string& host) noexcept {
    // The library is counted: this thread may outlast everybody else who started it.
    WSADATA data{};
    const int startup = ::WSAStartup(MAKEWORD(2, 2), &data);
    if (startup != 0) return pending->Finish({.error = static_cast<std::uint32_t>(startup), .address = 0});
    pending->Finish(AskSystem(host));
    ::WSACleanup();
}

}  // namespace

std::uint32_t LookUpHost(const std::string& host, const StopSignal& stop, std::chrono::milliseconds limit,
                         Ipv4& address) {
    if (const std::optional<Ipv4> dotted = ParseIpv4(host)) {
        address = *dotted;
        return 0;
    }
    // The system would look up what stands before the zero.
    if (host.empty() || host.find('\0') != std::string::npos) return kErrorHostNotFound;
    const auto pending = std::make_shared<PendingLookup>();
    try {
        std::thread([pending, host] { Run(pending, host); }).detach();
    } catch (const std::system_error&) {
        return WSATRY_AGAIN;
    }
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!stop.Requested()) {
        if (const std::optional<Found> found = pending->WaitFor(kSlice)) {
            if (found->error == 0) address = found->address;
            return found->error;
        }
        if (std::chrono::steady_clock::now() >= end) return kErrorTimedOut;
    }
    return kErrorCancelled;
}

}  // namespace brennvar
