#include "tools/SocketError.h"

namespace brennvar {

const char* TextOf(SocketMessage message) {
    switch (message) {
        case SocketMessage::Startup: return "WSAStartup() failed";
        case SocketMessage::Socket: return "socket() failed";
        case SocketMessage::Bind: return "bind() failed";
        case SocketMessage::Accept: return "accept() failed";
        case SocketMessage::Connect: return "connect() failed";
        case SocketMessage::InvalidParameters: return "Invalid parameters";
        case SocketMessage::UnknownAddress: return "Unable to solve this address";
        case SocketMessage::UnknownProxy: return "Unable to solve proxy address";
        case SocketMessage::UnknownRemote: return "Unable to solve remote address";
        case SocketMessage::ProxyLogin: return "Cannot login to proxy";
        case SocketMessage::ProxyNeedsLogin: return "Cannot login to proxy, authorisation required";
    }
    return "";
}

}  // namespace brennvar
