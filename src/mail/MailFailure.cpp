#include "mail/MailFailure.h"

#include <array>
#include <string_view>

#include "base/AsciiCase.h"
#include "mail/HeaderText.h"

namespace brennvar {
namespace {

bool Mentions(std::string_view text, std::string_view lowerWord) {
    for (std::size_t i = 0; i + lowerWord.size() <= text.size(); ++i) {
        if (EqualsIgnoringCase(text.substr(i, lowerWord.size()), lowerWord)) return true;
    }
    return false;
}

bool IsOneOf(int code, std::initializer_list<int> codes) {
    for (const int each : codes) {
        if (code == each) return true;
    }
    return false;
}

constexpr std::uint32_t kUnauthorised = 401;  // RFC 9110, 15.5.2; 407 is what a proxy should say

MailProblem ProblemOfProxy(const SocketError& error) {
    switch (error.message) {
        case SocketMessage::UnknownProxy: return MailProblem::UnknownProxy;
        case SocketMessage::ProxyNeedsLogin: return MailProblem::ProxyLogin;
        case SocketMessage::ProxyLogin:
            // Of a SOCKS proxy that did not take the login, or an HTTP proxy that answers a wrong one like a web
            // server; else it would not connect to the server.
            return error.code == kErrorAccessDenied || error.code == kUnauthorised ? MailProblem::ProxyLogin
                                                                                   : MailProblem::ProxyRefused;
        default: return MailProblem::ProxyNotConnected;
    }
}

MailProblem ProblemOfConnection(const SmtpEnd& end) {
    const SocketError& error = *end.connection;
    if (end.isTextSent) return MailProblem::Unconfirmed;
    if (error.IsCancelled()) return MailProblem::Stopped;
    if (error.message == SocketMessage::ProxyLogin || error.message == SocketMessage::ProxyNeedsLogin ||
        error.message == SocketMessage::UnknownProxy || error.peer == SocketPeer::Proxy) {
        return ProblemOfProxy(error);
    }
    if (error.message == SocketMessage::UnknownAddress || error.message == SocketMessage::UnknownRemote ||
        error.message == SocketMessage::InvalidParameters) {
        return MailProblem::UnknownHost;
    }
    if (end.step == SmtpStep::Connection) return MailProblem::NotConnected;
    if (error.code != kErrorTimedOut) return MailProblem::ConnectionLost;
    return end.step == SmtpStep::Greeting ? MailProblem::NoGreeting : MailProblem::NoAnswer;
}

// The codes are those of RFC 5321, 4.2.2, and RFC 4954, 6.
MailProblem ProblemOfReply(const SmtpEnd& end) {
    const bool wantsTls = end.code == 538 || Mentions(end.reply, "starttls") ||
                          Mentions(end.reply, "tls required") || Mentions(end.reply, "encrypt");
    if (wantsTls && end.code >= 400) return MailProblem::TlsWanted;
    if (end.code == 421) return MailProblem::NotReady;
    // What a server answers whose login failed, or who was not asked, to whatever comes next.
    const bool mayBeLogin = IsOneOf(end.code, {503, 530, 550, 551, 553, 554});
    if (IsOneOf(end.refusedLogin, {454, 534, 535}) && (mayBeLogin || end.step == SmtpStep::Login)) {
        return MailProblem::LoginRefused;
    }
    if (end.code == 530) return end.hasUser ? MailProblem::LoginImpossible : MailProblem::LoginWanted;
    if (Mentions(end.reply, "relay")) return MailProblem::RelayDenied;
    if (end.code == 552 || end.code == 523) return MailProblem::TooLarge;
    switch (end.step) {
        case SmtpStep::Connection:
        case SmtpStep::Greeting:
            if (end.code < 200 || end.code > 599) return MailProblem::NoMailServer;
            return MailProblem::NotReady;
        case SmtpStep::Login: return MailProblem::LoginRefused;
        case SmtpStep::Sender:
            return Mentions(end.reply, "auth") ? MailProblem::LoginWanted : MailProblem::SenderRefused;
        case SmtpStep::Recipient:
            if (end.code == 551) return MailProblem::RelayDenied;
            return Mentions(end.reply, "authent") ? MailProblem::LoginWanted : MailProblem::RecipientRefused;
        default: return MailProblem::TextRefused;
    }
}

Text SentenceOf(MailProblem problem) {
    switch (problem) {
        case MailProblem::NoServer:
            return Text{1770, "No mail server is set. Enter one in the options, under Logging."};
        case MailProblem::WrongServer:
            return Text{1813,
                        "The mail server in the options is written wrongly. Write its name, or name and port: "
                        "mail.example:25."};
        case MailProblem::NoSender:
            return Text{1771,
                        "The sender's address is missing or is not an address. Enter it in the options, under "
                        "Logging."};
        case MailProblem::NoRecipient: return Text{1772, "A recipient's address is missing or is not an address."};
        case MailProblem::NoAttachment: return Text{1773, "The attached file cannot be read any more."};
        case MailProblem::Stopped: return Text{1774, "Stopped: the mail was not sent."};
        case MailProblem::UnknownHost:
            return Text{1775, "The mail server was not found. Check its name and the connection to the Internet."};
        case MailProblem::UnknownProxy:
            return Text{1776, "The proxy was not found. Check its name in the options, under Miscellaneous."};
        case MailProblem::NotConnected:
            return Text{1777,
                        "The mail server takes no connection. Check its name and its port, and whether a firewall "
                        "is in between."};
        case MailProblem::ProxyNotConnected:
            return Text{1778,
                        "The proxy does not answer as it should. Check its name, port and type in the options."};
        case MailProblem::ProxyLogin:
            return Text{1779, "The proxy refused the login. Check its login and password in the options."};
        case MailProblem::ProxyRefused:
            return Text{1780, "The proxy would not connect to the mail server. Check whether it allows that port."};
        case MailProblem::NoAnswer: return Text{1814, "The mail server did not answer in time. Try again later."};
        case MailProblem::Unconfirmed:
            return Text{1815,
                        "The mail went out, but the mail server has not confirmed it: it may have been sent or "
                        "not."};
        case MailProblem::NotMade:
            return Text{1816, "The mail could not be made. Close other programs and try again."};
        case MailProblem::NoGreeting:
            return Text{1781,
                        "The mail server did not answer in time. Check the port: one for encrypted connections "
                        "never greets."};
        case MailProblem::ConnectionLost:
            return Text{1782, "The mail server closed the connection. Try again later, or check the port."};
        case MailProblem::NoMailServer:
            return Text{1783, "What answers there is no mail server. Check name and port."};
        case MailProblem::NotReady: return Text{1784, "The mail server takes no mail now. Try again later."};
        case MailProblem::TlsWanted:
            return Text{1785,
                        "The mail server wants an encrypted connection (TLS), which is not possible here. Use a "
                        "server or port without it."};
        case MailProblem::LoginRefused:
            return Text{1786, "The mail server refused the login. Check login and password."};
        case MailProblem::LoginImpossible:
            return Text{1787, "The mail server wants a login of another kind than this program has."};
        case MailProblem::LoginWanted:
            return Text{1788, "The mail server wants a login. Enter login and password in the options."};
        case MailProblem::SenderRefused:
            return Text{1789, "The mail server refused the sender. Check the sender's address in the options."};
        case MailProblem::RecipientRefused:
            return Text{1790, "The mail server refused the recipient. Check the recipient's address."};
        case MailProblem::RelayDenied:
            return Text{1791,
                        "The mail server does not pass mail on to this recipient. It may want a login, or another "
                        "server is the right one."};
        case MailProblem::TooLarge: return Text{1792, "The message is too large for the mail server."};
        default: return Text{1793, "The mail server refused the message."};
    }
}

}  // namespace

MailFailure FailureOf(const CSmtp& smtp, int code) {
    return FailureOf({.step = smtp.Step(),
                      .code = code,
                      .reply = smtp.LastReply(),
                      .connection = smtp.ConnectionError(),
                      .refusedLogin = smtp.RefusedLogin(),
                      .hasUser = smtp.HasUser(),
                      .isTextSent = smtp.IsTextSent()});
}

MailFailure FailureOf(const SmtpEnd& end) {
    MailFailure failure{.problem = MailProblem::NoMailServer,
                        .step = end.step,
                        .code = end.code > 0 ? end.code : 0,
                        .reply = CleanText(end.reply),
                        .error = end.connection ? end.connection->code : 0};
    const bool isBroken = end.code == CSmtp::kNoReply && end.connection;
    failure.problem = isBroken ? ProblemOfConnection(end) : ProblemOfReply(end);
    // The words of one that closed the connection say more than that it did.
    const bool wasClosed = isBroken && end.connection->code != kErrorTimedOut && !end.connection->IsCancelled();
    const bool mayHaveSaid =
        failure.problem == MailProblem::ConnectionLost || failure.problem == MailProblem::Unconfirmed;
    if (wasClosed && mayHaveSaid && end.reply.size() >= 3) {
        SmtpEnd said = end;
        said.code = 0;
        for (const char c : end.reply.substr(0, 3)) {
            if (c >= '0' && c <= '9') said.code = said.code * 10 + (c - '0');
        }
        if (said.code >= 400 && said.code <= 599) {
            failure.problem = ProblemOfReply(said);
            failure.code = said.code;
        }
    }
    return failure;
}

std::string DescribeFailure(const MailFailure& failure, const Language& language) {
    std::string text = language.GetText(SentenceOf(failure.problem));
    // "550 No such user", or the number of the system.
    constexpr std::size_t kLongestReply = 300;
    if (failure.problem == MailProblem::Stopped || failure.error == kErrorCancelled) return text;
    if (!failure.reply.empty()) {
        text += " (" + failure.reply.substr(0, kLongestReply) + ")";
    } else if (failure.error != 0) {
        text += " (" + language.GetText(1794, "error") + " " + std::to_string(failure.error) + ")";
    }
    return text;
}

}  // namespace brennvar
