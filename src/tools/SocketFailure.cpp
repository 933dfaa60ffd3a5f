#include "tools/SocketFailure.h"

namespace brennvar {
namespace {

constexpr Text kProxySettings =
    Text{1713, "The proxy's settings cannot be used. Check them in the options, under Miscellaneous."};
constexpr Text kProxyLogin = Text{
    1707,
    "The proxy wants a user name and a password that it knows. Check them in the options, under Miscellaneous."};
constexpr Text kProxyRefuses = Text{1708, "The proxy does not connect to the server, or cannot reach it."};
constexpr Text kProxyStrange = Text{
    1709,
    "The proxy does not answer as it should. Check its port and its type in the options, under Miscellaneous."};
constexpr Text kUnreachable =
    Text{1710, "The server cannot be reached. Check its name and the connection to the Internet."};

constexpr std::uint32_t kUnauthorised = 401;  // some proxies answer a wrong login so
constexpr std::uint32_t kFirstRefusal = 300;  // of HTTP's statuses, which end with 599
constexpr std::uint32_t kLastRefusal = 599;

Text OfServer(std::uint32_t code) {
    constexpr std::uint32_t kAddressNotAvailable = 10049;  // WSAEADDRNOTAVAIL
    constexpr std::uint32_t kAborted = 10053;              // WSAECONNABORTED
    switch (code) {
        case kErrorTimedOut:
            return Text{1703,
                        "The server did not answer in time. It may be busy, or a firewall stands in the way."};
        case kErrorRefused: return Text{1705, "The server refuses connections at present. Try again later."};
        case kErrorNotPermitted:
            return Text{1714, "The connection was blocked. Check the rules of the firewall for this program."};
        case kErrorNetworkUnreachable:
        case kErrorHostUnreachable:
        case kAddressNotAvailable: return kUnreachable;
        case kAborted:
        case kErrorConnectionLost: return Text{1711, "The server broke the connection off. Try again later."};
        default:
            return Text{1715, "The network of this computer is not ready. Check its connections and try again."};
    }
}

Text OfProxy(std::uint32_t code) {
    switch (code) {
        case kErrorTimedOut:
            return Text{1704, "The proxy did not answer in time. It may be busy, or not reach the server."};
        case kErrorRefused:
            return Text{1706,
                        "The proxy refuses the connection. Check its address, port and type in the options, "
                        "under Miscellaneous."};
        case kErrorNotPermitted: return kProxyRefuses;
        case kErrorConnectionLost: return kProxyStrange;
        default: return OfServer(code);
    }
}

Text OfName(std::uint32_t code, bool isProxy) {
    constexpr std::uint32_t kTryAgain = 11002;  // WSATRY_AGAIN: no name server answered
    if (code == kTryAgain || code == kErrorTimedOut) {
        return Text{1716, "No name server answered. Check the connection to the Internet."};
    }
    return isProxy ? Text{1702, "The proxy's name was not found. Check it in the options, under Miscellaneous."}
                   : Text{1701, "This name was not found. Check its spelling and the connection to the Internet."};
}

Text OfTunnel(std::uint32_t code) {
    if (code == kErrorAccessDenied || code == kUnauthorised) return kProxyLogin;
    return code >= kFirstRefusal && code <= kLastRefusal ? kProxyRefuses : kProxyStrange;
}

}  // namespace

Text SentenceOf(const SocketError& error) {
    if (error.IsCancelled()) return {};
    const bool isProxy = error.peer == SocketPeer::Proxy;
    switch (error.message) {
        case SocketMessage::UnknownAddress:
        case SocketMessage::UnknownProxy: return OfName(error.code, isProxy);
        case SocketMessage::UnknownRemote: return kUnreachable;
        case SocketMessage::ProxyNeedsLogin: return kProxyLogin;
        case SocketMessage::ProxyLogin: return OfTunnel(error.code);
        case SocketMessage::InvalidParameters:
            return isProxy ? kProxySettings : Text{1712, "This is no address or host name that can be looked up."};
        default: return isProxy ? OfProxy(error.code) : OfServer(error.code);
    }
}

}  // namespace brennvar
