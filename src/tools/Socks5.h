// The SOCKS proxy's part of a connection (RFC 1928; login of RFC 1929), as a dialogue: what is sent, how many bytes
// are awaited, and what these lead to.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/ProxySettings.h"
#include "tools/StreamEndpoint.h"

namespace brennvar {

class Socks5Dialogue {
public:
    // The settings and the server are borrowed. The server's name is at most 255 bytes (CWSocket sees to it).
    Socks5Dialogue(const StreamEndpoint& server, const ProxySettings& proxy) : m_server(server), m_proxy(proxy) {}

    [[nodiscard]] std::string Greeting() const;

    // Bytes that the next answer has; 0 when the tunnel stands.
    [[nodiscard]] std::size_t Awaited() const;
    // Takes exactly so many bytes and returns what is to be sent now, often nothing; it may hold the password.
    // Throws SocketError: login refused (kErrorAccessDenied), no method in common or no SOCKS 5 at all
    // (kErrorRefused), a user or password above 255 bytes where a login is wanted (kErrorInvalidParameter), what
    // the proxy says of the server.
    [[nodiscard]] std::string Take(std::string_view answer);

private:
    enum class Step {
        Method,        // version, method
        Login,         // version, status
        Reply,         // version, reply, reserved, kind of address
        NameLength,    // of the address that the proxy uses, which does not matter
        BoundAddress,  // address and port
        Done,
    };

    [[nodiscard]] std::string TakeMethod(unsigned char version, unsigned char method);
    [[nodiscard]] std::string LoginRequest() const;
    [[nodiscard]] std::string ConnectRequest() const;
    void TakeReply(std::string_view answer);

    const StreamEndpoint& m_server;
    const ProxySettings& m_proxy;
    Step m_step = Step::Method;
    std::size_t m_boundSize = 0;  // bytes of address and port that are still to come
};

}  // namespace brennvar
