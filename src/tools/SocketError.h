// What a connection to a server can fail with. Whois and mail end with one of these; what the user is told is made
// of the step that failed, the message and the number (tools and mail have their own sentences).
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace brennvar {

// Numbers of Winsock errors that we raise ourselves; all others come from the system as they are.
inline constexpr std::uint32_t kErrorInvalidParameter = 87;  // ERROR_INVALID_PARAMETER
inline constexpr std::uint32_t kErrorAccessDenied = 5;      // ERROR_ACCESS_DENIED: a SOCKS server refused the login
inline constexpr std::uint32_t kErrorNotPermitted = 10013;  // WSAEACCES
inline constexpr std::uint32_t kErrorNetworkUnreachable = 10051;  // WSAENETUNREACH
inline constexpr std::uint32_t kErrorTimedOut = 10060;            // WSAETIMEDOUT
inline constexpr std::uint32_t kErrorRefused = 10061;             // WSAECONNREFUSED
inline constexpr std::uint32_t kErrorHostUnreachable = 10065;     // WSAEHOSTUNREACH
inline constexpr std::uint32_t kErrorConnectionLost = 10054;      // WSAECONNRESET
inline constexpr std::uint32_t kErrorHostNotFound = 11001;        // WSAHOST_NOT_FOUND
inline constexpr std::uint32_t kErrorCancelled = 1223;  // ERROR_CANCELLED: our own stop signal, no failure

// The texts of the socket class, in English only, as they stand in what it throws. A connection that fails while
// it is used has no text of its own: it is Connect as well, and the number tells.
enum class SocketMessage {
    Startup,            // "WSAStartup() failed"
    Socket,             // "socket() failed"
    Bind,               // "bind() failed"
    Accept,             // "accept() failed"
    Connect,            // "connect() failed"
    InvalidParameters,  // "Invalid parameters"
    UnknownAddress,     // "Unable to solve this address"
    UnknownProxy,       // "Unable to solve proxy address"
    UnknownRemote,      // "Unable to solve remote address"
    ProxyLogin,         // "Cannot login to proxy"
    ProxyNeedsLogin,    // "Cannot login to proxy, authorisation required"
};
[[nodiscard]] const char* TextOf(SocketMessage message);

// Whom the failing step was taken with. What a proxy tells of the server behind it is the server's.
enum class SocketPeer { Server, Proxy };

class SocketError : public std::runtime_error {
public:
    SocketError(SocketMessage failed, std::uint32_t error, SocketPeer failedWith = SocketPeer::Server)
        : std::runtime_error(TextOf(failed)), message(failed), code(error), peer(failedWith) {}

    SocketMessage message;
    std::uint32_t code;  // 0 where no number says more; what an HTTP proxy answered is its status (403, 502)
    SocketPeer peer;

    [[nodiscard]] bool IsCancelled() const { return code == kErrorCancelled; }
};

}  // namespace brennvar
