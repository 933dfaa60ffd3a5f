// The proxy of the program's own connections: options 66 to 70.
#pragma once

#include <cstdint>
#include <string>

#include "base/WipedText.h"
#include "config/OptionValues.h"

namespace brennvar {

enum class ProxyKind : std::uint32_t { Http = 0, Socks5 = 1 };  // option 70

struct ProxySettings {
    std::string host;  // option 66; empty: no proxy
    std::uint16_t port = 0;
    std::string user;  // option 68; empty: no login
    WipedText password;
    ProxyKind kind = ProxyKind::Http;

    [[nodiscard]] bool IsUsed() const { return !host.empty(); }
};

// What the options say; a port above 65535 counts as 0, an unknown kind as HTTP.
[[nodiscard]] ProxySettings ProxyOf(const OptionValues& options);

}  // namespace brennvar
