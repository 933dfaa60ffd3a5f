#include "tools/NameLookup_win.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "base/AskAside.h"
#include "base/Windows_win.h"
#include "tools/SocketError.h"

namespace brennvar {
namespace {

struct Found {
    std::uint32_t error = 0;
    std::vector<Ipv4> addresses{};  // none without an error
};

Found AskSystem(const std::string& host) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (const int error = ::getaddrinfo(host.c_str(), nullptr, &hints, &list); error != 0) {
        return {.error = static_cast<std::uint32_t>(error)};
    }
    Found found;
    for (const addrinfo* entry = list; entry != nullptr; entry = entry->ai_next) {
        if (entry->ai_addr == nullptr || entry->ai_addrlen < sizeof(sockaddr_in)) continue;
        const Ipv4 address = reinterpret_cast<const sockaddr_in*>(entry->ai_addr)->sin_addr.s_addr;
        const bool isNew =
            std::find(found.addresses.begin(), found.addresses.end(), address) == found.addresses.end();
        if (isNew) found.addresses.push_back(address);
    }
    ::freeaddrinfo(list);
    if (found.addresses.empty()) found.error = kErrorHostNotFound;
    return found;
}

// The library is counted: this thread may outlast everybody else who started it.
Found StartAndAsk(const std::string& host) {
    WSADATA data{};
    const int startup = ::WSAStartup(MAKEWORD(2, 2), &data);
    if (startup != 0) return {.error = static_cast<std::uint32_t>(startup)};
    Found found = AskSystem(host);
    ::WSACleanup();
    return found;
}

}  // namespace

std::uint32_t LookUpAddresses(const std::string& host, const StopSignal& stop, std::chrono::milliseconds limit,
                              std::vector<Ipv4>& addresses) {
    if (const std::optional<Ipv4> dotted = ParseIpv4(host)) {
        addresses = {*dotted};
        return 0;
    }
    // The system would look up what stands before the zero.
    if (host.empty() || host.find('\0') != std::string::npos) return kErrorHostNotFound;
    std::optional<Found> found = AskAside([host] { return StartAndAsk(host); }, limit, stop);
    if (!found) return stop.Requested() ? kErrorCancelled : kErrorTimedOut;
    if (found->error == 0) addresses = std::move(found->addresses);
    return found->error;
}

std::uint32_t LookUpHost(const std::string& host, const StopSignal& stop, std::chrono::milliseconds limit,
                         Ipv4& address) {
    std::vector<Ipv4> addresses;
    const std::uint32_t error = LookUpAddresses(host, stop, limit, addresses);
    if (error == 0) address = addresses.front();
    return error;
}

}  // namespace brennvar
