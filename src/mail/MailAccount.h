// How the program sends mail of its own, as the options say it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "config/OptionValues.h"
#include "mail/Smtp.h"

namespace brennvar {

// The texts are as the user typed them; nothing of them has been looked at.
struct MailAccount {
    std::string from;            // option 35
    std::string to;              // option 36
    std::string cc;              // option 37
    std::string subject;         // option 38
    SmtpServer server;           // options 39 to 41, and the proxy of 66 to 70
    bool isServerWrong = false;  // option 39 is a text, but no host: the server has none
};

[[nodiscard]] MailAccount MailAccountOf(const OptionValues& options);

// "mail.example", or with a port behind a colon, "mail.example:587"; blanks around it do not count. Nothing when
// there is no host, or the port is none.
struct MailHost {
    std::string host;
    std::uint16_t port = kSmtpPort;
    friend bool operator==(const MailHost&, const MailHost&) = default;
};
[[nodiscard]] std::optional<MailHost> ParseMailHost(std::string_view text);

}  // namespace brennvar
