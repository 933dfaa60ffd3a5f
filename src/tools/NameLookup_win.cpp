#include "tools/NameLookup_win.h"

#include <ws2tcpip.h>

#include <optional>

#include "base/AskAside.h"
#include "base/Windows_win.h"
#include "tools/SocketError.h"

namespace brennvar {
namespace {

struct Found {
    std::uint32_t error = 0;
    Ipv4 address = 0;
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

// The library is counted: this thread may outlast everybody else who started it.
Found StartAndAsk(const std::string& host) {
    WSADATA data{};
    const int startup = ::WSAStartup(MAKEWORD(2, 2), &data);
    if (startup != 0) return {.error = static_cast<std::uint32_t>(startup), .address = 0};
    const Found found = AskSystem(host);
    ::WSACleanup();
    return found;
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
    const std::optional<Found> found = AskAside([host] { return StartAndAsk(host); }, limit, stop);
    if (!found) return stop.Requested() ? kErrorCancelled : kErrorTimedOut;
    if (found->error == 0) address = found->address;
    return found->error;
}

}  // namespace brennvar
