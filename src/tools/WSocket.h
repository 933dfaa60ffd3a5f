// One connection to a server by name and port, direct or through a proxy: what whois and mail have in common. It
// waits; it is used on a worker thread, by one thread at a time, and throws SocketError. Cancelling is the stop
// signal of its transport.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "tools/ProxySettings.h"
#include "tools/StreamTransport.h"

namespace brennvar {

struct StreamEndpoint {
    std::string host;  // a name or a dotted address
    std::uint16_t port = 0;
};

// How the HTTP proxy is asked; the two tools have spelled it differently from the first day.
enum class ConnectStyle {
    Http10,  // whois: HTTP/1.0, "Proxy-authorization", "User-Agent"
    Http11,  // mail: HTTP/1.1 with Host, "Proxy-Authorization"
};

struct ConnectLimits {
    std::chrono::milliseconds connect{10'000};  // of the connection to the server or the proxy
    std::chrono::milliseconds proxy{10'000};    // of each wait for the proxy
};

class CWSocket {
public:
    static constexpr std::size_t kMostProxyHeader = 16 * 1024;  // bytes of a reply to CONNECT

    // The clock is borrowed for the socket's life.
    CWSocket(std::unique_ptr<StreamTransport> transport, Clock& clock);

    // Resolves and connects; through a proxy when the settings name one, and the name of the server then goes to
    // the proxy unresolved.
    void Connect(const StreamEndpoint& server, const ProxySettings& proxy, ConnectStyle style,
                 const ConnectLimits& limits = {});
    // All of it, each wait at most the limit.
    void Send(std::string_view bytes, std::chrono::milliseconds limit);
    // What is there, at most maximum bytes, waiting at most the limit for the first. Empty: the server has closed
    // the connection. A limit of 0 looks only, and throws kErrorTimedOut when nothing is there.
    [[nodiscard]] std::string Receive(std::size_t maximum, std::chrono::milliseconds limit);
    void Close();

private:
    std::unique_ptr<StreamTransport> m_transport;
    Clock& m_clock;
};

}  // namespace brennvar
