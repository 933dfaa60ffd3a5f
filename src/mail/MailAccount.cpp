#include "mail/MailAccount.h"

#include <charconv>

namespace brennvar {

MailAccount MailAccountOf(const OptionValues& options) {
    MailAccount account{.from = options.TextOf(OptionId::MailFrom),
                        .to = options.TextOf(OptionId::MailTo),
                        .cc = options.TextOf(OptionId::MailCc),
                        .subject = options.TextOf(OptionId::MailSubject),
                        .server = {}};
    // A host that is none stays empty, which sending fails with.
    const std::string server = options.TextOf(OptionId::MailServer);
    if (const auto host = ParseMailHost(server)) {
        account.server.host = host->host;
        account.server.port = host->port;
    } else {
        account.isServerWrong = server.find_first_not_of(" \t") != std::string::npos;
    }
    account.server.user = options.TextOf(OptionId::MailLogin);
    account.server.password = Password(options.TextOf(OptionId::MailPassword));
    account.server.proxy = ProxyOf(options);
    return account;
}

std::optional<MailHost> ParseMailHost(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    const std::size_t colon = text.find(':');
    MailHost parsed{.host = std::string(text.substr(0, colon)), .port = kSmtpPort};
    if (colon != std::string_view::npos) {
        const char* const end = text.data() + text.size();
        const auto port = std::from_chars(text.data() + colon + 1, end, parsed.port);
        if (port.ec != std::errc() || port.ptr != end || parsed.port == 0) return std::nullopt;
    }
    if (parsed.host.empty()) return std::nullopt;
    return parsed;
}

}  // namespace brennvar
