#include "tools/WSocket.h"

#include <algorithm>
#include <utility>

#include "base/WipedText.h"
#include "tools/Socks5.h"

namespace brennvar {
namespace {

// Longest name that a SOCKS request can carry (RFC 1928, 5); a name of the DNS has 253 characters at most.
constexpr std::size_t kMostHostBytes = 255;

bool IsHost(const std::string& host) {
    return !host.empty() && host.size() <= kMostHostBytes && std::ranges::none_of(host, [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code <= 0x20 || code == 0x7F;
    });
}

void Check(bool isRight, SocketPeer which) {
    if (!isRight) throw SocketError(SocketMessage::InvalidParameters, kErrorInvalidParameter, which);
}

// Which call a number of the system comes from.
SocketMessage FailedCall(std::uint32_t error, SocketMessage otherwise) {
    constexpr std::uint32_t kTooManySockets = 10024;    // WSAEMFILE, of socket() only
    constexpr std::uint32_t kTooManyProcesses = 10067;  // WSAEPROCLIM, of WSAStartup() only
    constexpr std::uint32_t kNotReady = 10091;          // WSASYSNOTREADY
    constexpr std::uint32_t kNotInitialised = 10093;    // WSANOTINITIALISED; between them WSAVERNOTSUPPORTED
    if (error == kTooManySockets) return SocketMessage::Socket;
    const bool isStartup = error == kTooManyProcesses || (error >= kNotReady && error <= kNotInitialised);
    return isStartup ? SocketMessage::Startup : otherwise;
}

// Sends what the transport takes at once, and returns the rest.
std::string_view SendSome(StreamTransport& transport, std::string_view bytes, std::chrono::milliseconds limit,
                          SocketPeer peer) {
    const StreamOutcome sent = transport.Send(std::as_bytes(std::span(bytes)), limit);
    if (sent.error != 0) throw SocketError(SocketMessage::Connect, sent.error, peer);
    return bytes.substr(std::min(sent.count, bytes.size()));
}

std::string ReceiveSome(StreamTransport& transport, std::size_t maximum, std::chrono::milliseconds limit,
                        SocketPeer peer) {
    std::string bytes(maximum, '\0');
    const StreamOutcome got = transport.Receive(std::as_writable_bytes(std::span(bytes)), limit);
    if (got.error != 0) throw SocketError(SocketMessage::Connect, got.error, peer);
    bytes.resize(std::min(got.count, maximum));
    return bytes;
}

}  // namespace

// What is said with a proxy, against the limit of one wait and that of all of them together.
class CWSocket::ProxyTalk {
public:
    ProxyTalk(StreamTransport& transport, Clock& clock, const ConnectLimits& limits)
        : m_transport(transport), m_clock(clock), m_limits(limits), m_end(clock.Elapsed() + limits.wholeProxy) {}

    void Send(std::string_view bytes) {
        while (!bytes.empty()) bytes = SendSome(m_transport, bytes, NextWait(), SocketPeer::Proxy);
    }
    // At least one byte; nothing when the proxy has closed the connection.
    [[nodiscard]] std::string Receive(std::size_t maximum) {
        return ReceiveSome(m_transport, maximum, NextWait(), SocketPeer::Proxy);
    }

private:
    [[nodiscard]] std::chrono::milliseconds NextWait() const {
        const std::chrono::milliseconds left = m_end - m_clock.Elapsed();
        if (left <= std::chrono::milliseconds(0)) {
            throw SocketError(SocketMessage::Connect, kErrorTimedOut, SocketPeer::Proxy);
        }
        return std::min(left, m_limits.proxy);
    }

    StreamTransport& m_transport;
    Clock& m_clock;
    const ConnectLimits& m_limits;
    const std::chrono::milliseconds m_end;
};

CWSocket::CWSocket(std::unique_ptr<StreamTransport> transport, Clock& clock)
    : m_transport(std::move(transport)), m_clock(clock) {}

void CWSocket::Connect(const StreamEndpoint& server, const ProxySettings& proxy, ConnectStyle style,
                       const ConnectLimits& limits) {
    Close();
    Check(IsHost(server.host) && server.port != 0, SocketPeer::Server);
    if (!proxy.IsUsed()) return ConnectTo(server, SocketPeer::Server, limits.connect);
    const StreamEndpoint proxyEnd{.host = proxy.host, .port = proxy.port};
    Check(proxy.port != 0, SocketPeer::Proxy);
    ConnectTo(proxyEnd, SocketPeer::Proxy, limits.connect);
    ProxyTalk talk(*m_transport, m_clock, limits);
    try {
        if (proxy.kind == ProxyKind::Socks5) {
            OpenSocksTunnel(talk, server, proxy);
        } else {
            OpenHttpTunnel(talk, server, proxy, style);
        }
    } catch (...) {
        Close();
        throw;
    }
}

Ipv4 CWSocket::Resolve(const std::string& host) {
    return Resolve(host, SocketPeer::Server);
}

Ipv4 CWSocket::Resolve(const std::string& host, SocketPeer which) {
    Check(IsHost(host), which);
    Ipv4 address = 0;
    if (const std::uint32_t error = m_transport->Resolve(host, address); error != 0) {
        const bool isProxy = which == SocketPeer::Proxy;
        throw SocketError(FailedCall(error, isProxy ? SocketMessage::UnknownProxy : SocketMessage::UnknownAddress),
                          error, which);
    }
    return address;
}

void CWSocket::ConnectTo(const StreamEndpoint& peer, SocketPeer which, std::chrono::milliseconds limit) {
    const Ipv4 address = Resolve(peer.host, which);
    if (const std::uint32_t error = m_transport->Connect(address, peer.port, limit); error != 0) {
        throw SocketError(FailedCall(error, SocketMessage::Connect), error, which);
    }
}

void CWSocket::OpenHttpTunnel(ProxyTalk& talk, const StreamEndpoint& server, const ProxySettings& proxy,
                              ConnectStyle style) {
    constexpr std::size_t kPiece = 1024;
    constexpr int kLoginWanted = 407;
    talk.Send(WipedText(ConnectRequest(server, proxy, style)));
    ConnectReply reply;
    for (ConnectReply::State state = ConnectReply::State::Reading; state != ConnectReply::State::Complete;) {
        const std::string piece = talk.Receive(kPiece);
        if (piece.empty()) {
            // Some proxies close right behind the line that refuses.
            if (reply.Status() >= 300) break;
            throw SocketError(SocketMessage::ProxyLogin, kErrorConnectionLost, SocketPeer::Proxy);
        }
        state = reply.Add(piece);
        if (state == ConnectReply::State::Unreadable)
            throw SocketError(SocketMessage::ProxyLogin, 0, SocketPeer::Proxy);
    }
    const int status = reply.Status();
    if (status < 200 || status > 299) {
        throw SocketError(status == kLoginWanted ? SocketMessage::ProxyNeedsLogin : SocketMessage::ProxyLogin,
                          static_cast<std::uint32_t>(status), SocketPeer::Proxy);
    }
    m_ahead = reply.Rest();
}

void CWSocket::OpenSocksTunnel(ProxyTalk& talk, const StreamEndpoint& server, const ProxySettings& proxy) {
    Socks5Dialogue dialogue(server, proxy);
    talk.Send(dialogue.Greeting());
    while (const std::size_t awaited = dialogue.Awaited()) {
        std::string answer;
        while (answer.size() < awaited) {
            const std::string piece = talk.Receive(awaited - answer.size());
            if (piece.empty())
                throw SocketError(SocketMessage::ProxyLogin, kErrorConnectionLost, SocketPeer::Proxy);
            answer += piece;
        }
        talk.Send(WipedText(dialogue.Take(answer)));
    }
}

void CWSocket::Send(std::string_view bytes, std::chrono::milliseconds limit) {
    while (!bytes.empty()) bytes = SendSome(*m_transport, bytes, limit, SocketPeer::Server);
}

std::string CWSocket::Receive(std::size_t maximum, std::chrono::milliseconds limit) {
    if (!m_ahead.empty()) {
        std::string first = m_ahead.substr(0, maximum);
        m_ahead.erase(0, first.size());
        return first;
    }
    return ReceiveSome(*m_transport, maximum, limit, SocketPeer::Server);
}

void CWSocket::Close() {
    m_ahead.clear();
    m_transport->Close();
}

}  // namespace brennvar
