// What a connection to a server can fail with. Whois and mail end with one of these; what the user is told is made
// of the step that failed, the message and the number (tools and mail have their own sentences).
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace brennvar {

// Numbers of Winsock errors that we raise ourselves; all others come from the system as they are.
inline constexpr std::uint32_t kErrorInvalidParameter = 87;  // ERROR_INVALID_PARAMETER
inline constexpr std::uint32_t kErrorAccessDenied = 5;  // ERROR_ACCESS_DENIED: a SOCKS server refused the login
inline constexpr std::uint32_t kErrorTimedOut = 10060;  // WSAETIMEDOUT
inline constexpr std::uint32_t kErrorRefused = 10061;   // WSAECONNREFUSED
inline constexpr std::uint32_t kErrorConnectionLost = 10054;  // WSAECONNRESET
inline constexpr std::uint32_t kErrorHostNotFound = 11001;    // WSAHOST_NOT_FOUND
inline constexpr std::uint32_t kErrorCancelled = 1223;        // ERROR_CANCELLED: our own stop signal, no failure

// The texts of the socket class, in English only, as they stand in what it throws.
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

class SocketError : public std::runtime_error {
public:
    SocketError(SocketMessage failed, std::uint32_t error)
        : std::runtime_error(TextOf(failed)), message(failed), code(error) {}

    SocketMessage message;
    std::uint32_t code;  // 0 where no number says more

    [[nodiscard]] bool IsCancelled() const { return code == kErrorCancelled; }
};

}  // namespace brennvar
