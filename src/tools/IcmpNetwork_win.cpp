#include "tools/IcmpNetwork_win.h"

#include "base/Windows_win.h"
// winsock2.h must stand before it.
#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/AskAside.h"
#include "tools/NameLookup_win.h"
#include "tools/UniqueSocket_win.h"

namespace brennvar {
namespace {

// The system itself gives up an unreachable name server after about as long, and tries the next one.
constexpr std::chrono::milliseconds kResolveLimit{30'000};
constexpr std::chrono::milliseconds kNameLimit{5000};
constexpr std::size_t kNameSize = 256;  // characters of host and service, the zero included

std::uint32_t LastError() {
    return static_cast<std::uint32_t>(::WSAGetLastError());
}

sockaddr_in SocketAddress(Ipv4 address, std::uint16_t port) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = SwapPort(port);
    place.sin_addr.s_addr = address;
    return place;
}

class RawSocket final : public IcmpSocket {
public:
    explicit RawSocket(UniqueSocket socket) : m_socket(std::move(socket)) {}

    std::uint32_t SetTimeToLive(std::uint32_t hops) override {
        const auto value = static_cast<int>(hops);
        return ::setsockopt(m_socket.Get(), IPPROTO_IP, IP_TTL, reinterpret_cast<const char*>(&value),
                            sizeof value) == 0
                   ? 0
                   : LastError();
    }

    IcmpSent Send(Ipv4 destination, std::span<const std::byte> message) override {
        const sockaddr_in place = SocketAddress(destination, 0);
        const int count =
            ::sendto(m_socket.Get(), reinterpret_cast<const char*>(message.data()),
                     static_cast<int>(message.size()), 0, reinterpret_cast<const sockaddr*>(&place), sizeof place);
        if (count < 0) return {.error = LastError(), .count = 0};
        return {.error = 0, .count = static_cast<std::size_t>(count)};
    }

    IcmpWait WaitReadable(std::chrono::milliseconds limit) override {
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(m_socket.Get(), &readable);
        timeval time{};
        time.tv_sec = static_cast<long>(limit.count() / 1000);
        time.tv_usec = static_cast<long>(limit.count() % 1000 * 1000);
        const int count = ::select(0, &readable, nullptr, nullptr, &time);
        if (count < 0) return IcmpWait::Failed;
        return count == 0 ? IcmpWait::Nothing : IcmpWait::Readable;
    }

    IcmpReceived Receive(std::span<std::byte> buffer) override {
        sockaddr_in source{};
        int sourceSize = sizeof source;
        const int count =
            ::recvfrom(m_socket.Get(), reinterpret_cast<char*>(buffer.data()), static_cast<int>(buffer.size()), 0,
                       reinterpret_cast<sockaddr*>(&source), &sourceSize);
        const std::uint32_t error = count < 0 ? LastError() : 0;
        return {.error = error,
                .count = static_cast<std::size_t>(std::max(count, 0)),
                .source = source.sin_addr.s_addr};
    }

private:
    const UniqueSocket m_socket;
};

std::string AskForName(Ipv4 address, std::uint16_t port) {
    const sockaddr_in place = SocketAddress(address, port);
    std::array<char, kNameSize> host{};
    std::array<char, kNameSize> service{};
    const bool isKnown = ::getnameinfo(reinterpret_cast<const sockaddr*>(&place), sizeof place, host.data(),
                                       static_cast<DWORD>(host.size()), service.data(),
                                       static_cast<DWORD>(service.size()), NI_NAMEREQD) == 0;
    host.back() = '\0';
    return isKnown && host.front() != '\0' ? host.data() : "-";
}

// A thread that is left behind may outlast everybody else who has started the library.
std::string StartAndAskForName(Ipv4 address, std::uint16_t port) {
    WSADATA data{};
    if (::WSAStartup(MAKEWORD(1, 1), &data) != 0) return "-";
    std::string name = AskForName(address, port);
    ::WSACleanup();
    return name;
}

}  // namespace

bool WinIcmpNetwork::StartLibrary() {
    WSADATA data{};
    return ::WSAStartup(MAKEWORD(2, 1), &data) == 0;
}

void WinIcmpNetwork::StopLibrary() {
    ::WSACleanup();
}

std::unique_ptr<IcmpSocket> WinIcmpNetwork::Open(std::uint32_t& error) {
    UniqueSocket socket(::WSASocketA(AF_INET, SOCK_RAW, IPPROTO_ICMP, nullptr, 0, 0));
    // A wait that fails must not be followed by a receive that waits for ever.
    u_long isNonBlocking = 1;
    if (!socket || ::ioctlsocket(socket.Get(), FIONBIO, &isNonBlocking) != 0) {
        error = LastError();
        return nullptr;
    }
    return std::make_unique<RawSocket>(std::move(socket));
}

std::optional<Ipv4> WinIcmpNetwork::Resolve(const std::string& host, const StopSignal& stop) {
    Ipv4 address = 0;
    if (LookUpHost(host, stop, kResolveLimit, address) != 0) return std::nullopt;
    return address;
}

std::string WinIcmpNetwork::ReverseLookup(const std::string& address, std::uint16_t port, const StopSignal& stop) {
    const std::optional<Ipv4> parsed = ParseIpv4(address);
    if (!parsed) return "-";
    return AskAside([asked = *parsed, port] { return StartAndAskForName(asked, port); }, kNameLimit, stop)
        .value_or("-");
}

std::uint32_t WinIcmpNetwork::TickCount() const {
    return ::GetTickCount();
}

std::uint32_t WinIcmpNetwork::ProcessId() const {
    return ::GetCurrentProcessId();
}

}  // namespace brennvar
