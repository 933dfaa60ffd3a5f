#include "tools/Socks5.h"

#include <cstdint>
#include <optional>

#include "base/Ipv4.h"
#include "tools/SocketError.h"

namespace brennvar {
namespace {

constexpr char kVersion = 5;
constexpr char kLoginVersion = 1;
constexpr char kCommandConnect = 1;
constexpr char kReserved = 0;
constexpr unsigned char kNoLogin = 0;
constexpr unsigned char kUserAndPassword = 2;
constexpr unsigned char kNoMethod = 0xFF;

// Kinds of addresses.
constexpr char kIpv4 = 1;
constexpr char kName = 3;
constexpr char kIpv6 = 4;
constexpr std::size_t kIpv4Size = 4;
constexpr std::size_t kIpv6Size = 16;
constexpr std::size_t kPortSize = 2;

constexpr std::size_t kMostLength = 255;  // every length is one byte

unsigned char ByteAt(std::string_view bytes, std::size_t place) {
    return static_cast<unsigned char>(bytes[place]);
}

void AppendWithLength(std::string& bytes, std::string_view text) {
    bytes += static_cast<char>(static_cast<unsigned char>(text.size()));
    bytes += text;
}

// What a reply other than 0 says of the server (RFC 1928, 6).
SocketError RefusalOf(unsigned char reply) {
    switch (reply) {
        case 2: return {SocketMessage::Connect, kErrorNotPermitted, SocketPeer::Proxy};  // by the proxy's rules
        case 3: return {SocketMessage::Connect, kErrorNetworkUnreachable};
        case 4: return {SocketMessage::UnknownRemote, kErrorHostUnreachable};
        case 5: return {SocketMessage::Connect, kErrorRefused};
        case 6:
            return {SocketMessage::Connect, kErrorTimedOut};  // "TTL expired"
        // 1: a failure of its own; 7 and 8: it cannot connect, or not to such addresses; others have no meaning.
        default: return {SocketMessage::Connect, kErrorRefused, SocketPeer::Proxy};
    }
}

}  // namespace

std::string Socks5Dialogue::Greeting() const {
    if (m_proxy.user.empty()) return {kVersion, 1, kNoLogin};
    return {kVersion, 2, kNoLogin, kUserAndPassword};
}

std::size_t Socks5Dialogue::Awaited() const {
    switch (m_step) {
        case Step::Method:
        case Step::Login: return 2;
        case Step::Reply: return 4;
        case Step::NameLength: return 1;
        case Step::BoundAddress: return m_boundSize;
        case Step::Done: break;
    }
    return 0;
}

std::string Socks5Dialogue::Take(std::string_view answer) {
    switch (m_step) {
        case Step::Method: return TakeMethod(ByteAt(answer, 0), ByteAt(answer, 1));
        case Step::Login:
            if (ByteAt(answer, 1) != 0)
                throw SocketError(SocketMessage::ProxyLogin, kErrorAccessDenied, SocketPeer::Proxy);
            m_step = Step::Reply;
            return ConnectRequest();
        case Step::Reply: TakeReply(answer); return {};
        case Step::NameLength:
            m_boundSize = ByteAt(answer, 0) + kPortSize;
            m_step = Step::BoundAddress;
            return {};
        case Step::BoundAddress:
        case Step::Done: m_step = Step::Done; return {};
    }
    return {};
}

std::string Socks5Dialogue::TakeMethod(unsigned char version, unsigned char method) {
    const bool isKnown = version == kVersion && (method == kNoLogin || method == kUserAndPassword);
    if (isKnown && method == kNoLogin) {
        m_step = Step::Reply;
        return ConnectRequest();
    }
    if (isKnown && !m_proxy.user.empty()) {
        m_step = Step::Login;
        return LoginRequest();
    }
    // Without a user, a proxy that takes none of our methods, or one that was not offered, wants a login.
    const bool wantsLogin = version == kVersion && m_proxy.user.empty() && (isKnown || method == kNoMethod);
    throw SocketError(wantsLogin ? SocketMessage::ProxyNeedsLogin : SocketMessage::ProxyLogin, kErrorRefused,
                      SocketPeer::Proxy);
}

std::string Socks5Dialogue::LoginRequest() const {
    if (m_proxy.user.size() > kMostLength || m_proxy.password.Text().size() > kMostLength) {
        throw SocketError(SocketMessage::InvalidParameters, kErrorInvalidParameter, SocketPeer::Proxy);
    }
    const std::string& password = m_proxy.password;
    std::string request;
    request.reserve(3 + m_proxy.user.size() + password.size());  // what grew would leave a copy behind
    request += kLoginVersion;
    AppendWithLength(request, m_proxy.user);
    AppendWithLength(request, password);
    return request;
}

std::string Socks5Dialogue::ConnectRequest() const {
    std::string request{kVersion, kCommandConnect, kReserved};
    if (const std::optional<Ipv4> address = ParseIpv4(m_server.host)) {
        request += kIpv4;
        // In network order: the lowest byte is the first of the dotted text.
        for (int shift = 0; shift < 32; shift += 8) request += static_cast<char>(*address >> shift & 0xFF);
    } else {
        request += kName;
        AppendWithLength(request, m_server.host);
    }
    request += static_cast<char>(m_server.port >> 8);
    request += static_cast<char>(m_server.port & 0xFF);
    return request;
}

void Socks5Dialogue::TakeReply(std::string_view answer) {
    if (ByteAt(answer, 0) != kVersion)
        throw SocketError(SocketMessage::ProxyLogin, kErrorRefused, SocketPeer::Proxy);
    if (const unsigned char reply = ByteAt(answer, 1); reply != 0) throw RefusalOf(reply);
    switch (answer[3]) {
        case kIpv4: m_boundSize = kIpv4Size + kPortSize; break;
        case kIpv6: m_boundSize = kIpv6Size + kPortSize; break;
        case kName: m_step = Step::NameLength; return;
        default: throw SocketError(SocketMessage::ProxyLogin, kErrorRefused, SocketPeer::Proxy);
    }
    m_step = Step::BoundAddress;
}

}  // namespace brennvar
