// What whois and mail are told about their connection.
#pragma once

#include "Arguments.h"
#include "tools/ProxySettings.h"
#include "tools/SocketError.h"

#include <cstdio>

namespace brennvar::peers {

[[nodiscard]] inline ProxySettings ProxyFrom(const Arguments& arguments) {
    return {.host = arguments.Text("proxy"),
            .port = static_cast<std::uint16_t>(arguments.Number("proxy-port", 0)),
            .user = arguments.Text("proxy-user"),
            .password = arguments.Text("proxy-password"),
            .kind = arguments.Text("proxy-kind") == "socks5" ? ProxyKind::Socks5 : ProxyKind::Http};
}

// "connect() failed (10061)"
inline void TellFailure(const SocketError& error) {
    (void)std::printf("outcome: %s (%u)\n", error.what(), error.code);
}

}  // namespace brennvar::peers
