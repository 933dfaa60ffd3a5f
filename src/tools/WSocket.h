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
#include "tools/HttpConnect.h"
#include "tools/ProxySettings.h"
#include "tools/SocketError.h"
#include "tools/StreamEndpoint.h"
#include "tools/StreamTransport.h"

namespace brennvar {

struct ConnectLimits {
    std::chrono::milliseconds connect{10'000};  // of the connection to the server or the proxy
    std::chrono::milliseconds proxy{10'000};    // of each wait for the proxy
    // Of all that is said with the proxy, from the connection to it on: one that sends a byte a second would never
    // let a single wait expire. Three waits, as many as the longest dialogue has (SOCKS with a login).
    std::chrono::milliseconds wholeProxy{30'000};
};

class CWSocket {
public:
    // The clock is borrowed for the socket's life.
    CWSocket(std::unique_ptr<StreamTransport> transport, Clock& clock);

    // The first IPv4 address of a host, looked up by this machine.
    [[nodiscard]] Ipv4 Resolve(const std::string& host);
    // Resolves and connects; through a proxy when the settings name one, and the name of the server then goes to
    // the proxy unresolved. Host names are at most 255 bytes without blanks and control characters
    // (kErrorInvalidParameter): what a user pastes can never become a header line.
    void Connect(const StreamEndpoint& server, const ProxySettings& proxy, ConnectStyle style,
                 const ConnectLimits& limits = {});
    // All of it, each wait at most the limit.
    void Send(std::string_view bytes, std::chrono::milliseconds limit);
    // What is there, at most maximum bytes, waiting at most the limit for the first. Empty: the server has closed
    // the connection. A limit of 0 looks only, and throws kErrorTimedOut when nothing is there.
    // What a proxy sent together with its reply comes first.
    [[nodiscard]] std::string Receive(std::size_t maximum, std::chrono::milliseconds limit);
    void Close();

private:
    class ProxyTalk;

    [[nodiscard]] Ipv4 Resolve(const std::string& host, SocketPeer which);
    void ConnectTo(const StreamEndpoint& peer, SocketPeer which, std::chrono::milliseconds limit);
    void OpenHttpTunnel(ProxyTalk& talk, const StreamEndpoint& server, const ProxySettings& proxy,
                        ConnectStyle style);
    static void OpenSocksTunnel(ProxyTalk& talk, const StreamEndpoint& server, const ProxySettings& proxy);

    std::unique_ptr<StreamTransport> m_transport;
    Clock& m_clock;
    std::string m_ahead;  // of the server, received together with the last of the proxy's words
};

}  // namespace brennvar
