// Why a mail was not sent, told in one sentence: which step failed and what to look at.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "config/Language.h"
#include "mail/Smtp.h"

namespace brennvar {

enum class MailProblem : std::uint8_t {
    NoServer,      // the options name none
    WrongServer,   // what they name is no host, or no host and port
    NoSender,      // or an address that is none
    NoRecipient,   // likewise
    NoAttachment,  // the file cannot be read any more
    Stopped,       // by the user
    UnknownHost,
    UnknownProxy,
    NotConnected,       // refused, or not reached
    ProxyNotConnected,  // likewise, or the proxy answers otherwise than one
    ProxyLogin,
    ProxyRefused,  // to connect to the mail server
    NoGreeting,
    NoAnswer,  // later on
    ConnectionLost,
    Unconfirmed,   // all of the mail went out, and then the connection ended
    NoMailServer,  // what answers is something else
    NotReady,      // the server takes no mail now
    TlsWanted,
    LoginRefused,
    LoginImpossible,  // the server knows no login of our kind
    LoginWanted,
    SenderRefused,
    RecipientRefused,
    RelayDenied,
    TooLarge,
    TextRefused,
    NotMade,  // something of ours failed
};

struct MailFailure {
    MailProblem problem = MailProblem::TextRefused;
    SmtpStep step = SmtpStep::Connection;
    int code = 0;             // of the server's reply, where there was one
    std::string reply{};      // the server's words
    std::uint32_t error = 0;  // of the connection
};

// Of a dialogue that has ended with this code, which is not 0.
[[nodiscard]] MailFailure FailureOf(const CSmtp& smtp, int code);
// The same, of what it is made of: code and reply of the step that failed, what the connection failed with, and the
// code that a login before it was refused with (0: none was).
struct SmtpEnd {
    SmtpStep step = SmtpStep::Connection;
    int code = 0;
    std::string reply{};
    std::optional<SocketError> connection{};
    int refusedLogin = 0;
    bool hasUser = false;     // a login is set
    bool isTextSent = false;  // all of the message went out
};
[[nodiscard]] MailFailure FailureOf(const SmtpEnd& end);

// One sentence of the language, and the server's words or the error's number behind it where they say more.
[[nodiscard]] std::string DescribeFailure(const MailFailure& failure, const Language& language);

}  // namespace brennvar
