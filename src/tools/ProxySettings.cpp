#include "tools/ProxySettings.h"

namespace brennvar {

ProxySettings ProxyOf(const OptionValues& options) {
    const std::uint32_t port = options.Number(OptionId::ProxyPort);
    const bool isSocks = options.Number(OptionId::ProxyType) == static_cast<std::uint32_t>(ProxyKind::Socks5);
    return {.host = options.TextOf(OptionId::ProxyHost),
            .port = port <= 0xFFFF ? static_cast<std::uint16_t>(port) : std::uint16_t{0},
            .user = options.TextOf(OptionId::ProxyUser),
            .password = options.TextOf(OptionId::ProxyPassword),
            .kind = isSocks ? ProxyKind::Socks5 : ProxyKind::Http};
}

}  // namespace brennvar
