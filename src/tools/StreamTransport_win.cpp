#include "tools/StreamTransport_win.h"

#include <algorithm>
#include <limits>

#include "tools/NameLookup_win.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Between two looks at the stop signal; a cancelled wait ends within 100 ms.
constexpr milliseconds kSlice{20};
// Of a name look-up. The system's own gives up sooner, unless the resolver hangs.
constexpr milliseconds kLookUpLimit{30'000};

std::uint32_t StartLibrary() {
    WSADATA data{};
    return static_cast<std::uint32_t>(::WSAStartup(MAKEWORD(2, 2), &data));
}

std::uint32_t LastError() {
    return static_cast<std::uint32_t>(::WSAGetLastError());
}

// What a connection that was begun has come to.
std::uint32_t ErrorOf(SOCKET socket) {
    int error = 0;
    int size = sizeof error;
    if (::getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error), &size) != 0) return LastError();
    return static_cast<std::uint32_t>(error);
}

int LengthOf(std::size_t size) {
    return static_cast<int>(std::min<std::size_t>(size, std::numeric_limits<int>::max()));
}

}  // namespace

WinsockTransport::WinsockTransport(const StopSignal& stop) : m_stop(stop), m_startupError(StartLibrary()) {}

WinsockTransport::~WinsockTransport() {
    Close();
    if (m_startupError == 0) ::WSACleanup();
}

std::uint32_t WinsockTransport::Resolve(const std::string& host, Ipv4& address) {
    if (m_startupError != 0) return m_startupError;
    return LookUpHost(host, m_stop, kLookUpLimit, address);
}

std::uint32_t WinsockTransport::Connect(Ipv4 address, std::uint16_t port, milliseconds limit) {
    Close();
    if (m_startupError != 0) return m_startupError;
    if (m_stop.Requested()) return kErrorCancelled;
    UniqueSocket socket(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!socket) return LastError();
    u_long nonBlocking = 1;
    if (::ioctlsocket(socket.Get(), static_cast<long>(FIONBIO), &nonBlocking) != 0) return LastError();
    sockaddr_in peer{};
    peer.sin_family = AF_INET;
    peer.sin_port = SwapPort(port);
    peer.sin_addr.s_addr = address;
    m_socket = std::move(socket);
    std::uint32_t error = 0;
    if (::connect(m_socket.Get(), reinterpret_cast<const sockaddr*>(&peer), sizeof peer) != 0) {
        error = LastError();
        if (error == WSAEWOULDBLOCK) {
            error = WaitUntil(Readiness::Connected, limit);
            if (error == 0) error = ErrorOf(m_socket.Get());
        }
    }
    if (error != 0) Close();
    return error;
}

StreamOutcome WinsockTransport::Send(std::span<const std::byte> bytes, milliseconds limit) {
    const auto end = steady_clock::now() + limit;
    for (;;) {
        if (m_stop.Requested()) return {.error = kErrorCancelled};
        const int sent =
            ::send(m_socket.Get(), reinterpret_cast<const char*>(bytes.data()), LengthOf(bytes.size()), 0);
        if (sent >= 0) return {.error = 0, .count = static_cast<std::size_t>(sent)};
        if (const std::uint32_t error = LastError(); error != WSAEWOULDBLOCK) return {.error = error};
        const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        if (left <= milliseconds(0)) return {.error = kErrorTimedOut};
        if (const std::uint32_t error = WaitUntil(Readiness::Write, left); error != 0) return {.error = error};
    }
}

StreamOutcome WinsockTransport::Receive(std::span<std::byte> bytes, milliseconds limit) {
    const auto end = steady_clock::now() + limit;
    for (;;) {
        if (m_stop.Requested()) return {.error = kErrorCancelled};
        const int got = ::recv(m_socket.Get(), reinterpret_cast<char*>(bytes.data()), LengthOf(bytes.size()), 0);
        if (got >= 0) return {.error = 0, .count = static_cast<std::size_t>(got)};
        if (const std::uint32_t error = LastError(); error != WSAEWOULDBLOCK) return {.error = error};
        const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        if (left <= milliseconds(0)) return {.error = kErrorTimedOut};
        if (const std::uint32_t error = WaitUntil(Readiness::Read, left); error != 0) return {.error = error};
    }
}

std::uint32_t WinsockTransport::WaitUntil(Readiness readiness, milliseconds limit) const {
    const auto end = steady_clock::now() + limit;
    for (;;) {
        if (m_stop.Requested()) return kErrorCancelled;
        const auto left = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
        const milliseconds slice = std::clamp(left, milliseconds(0), kSlice);
        fd_set ready;
        // A connection that was refused is told here. So is a byte that the peer calls urgent, for as long as it
        // has not been read as one: whoever waits for others does not look.
        fd_set failed;
        FD_ZERO(&ready);
        FD_ZERO(&failed);
        FD_SET(m_socket.Get(), &ready);
        FD_SET(m_socket.Get(), &failed);
        timeval wait{.tv_sec = 0, .tv_usec = static_cast<long>(slice.count()) * 1000};
        const bool isRead = readiness == Readiness::Read;
        const int count = ::select(0, isRead ? &ready : nullptr, isRead ? nullptr : &ready,
                                   readiness == Readiness::Connected ? &failed : nullptr, &wait);
        if (count == SOCKET_ERROR) return LastError();
        if (count > 0) return 0;
        if (left <= milliseconds(0)) return kErrorTimedOut;
    }
}

}  // namespace brennvar
