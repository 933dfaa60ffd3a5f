#include "mail/MailFailure.h"

#include <gtest/gtest.h>

#include "mail/MailAccount.h"

namespace brennvar {
namespace {

using enum MailProblem;

TEST(MailFailureTest, NamesWhatTheConnectionFailedWith) {
    struct Row {
        SocketError error;
        SmtpStep step;
        MailProblem expected;
    };
    const Row rows[] = {
        {{SocketMessage::UnknownAddress, kErrorHostNotFound}, SmtpStep::Connection, UnknownHost},
        {{SocketMessage::InvalidParameters, kErrorInvalidParameter}, SmtpStep::Connection, UnknownHost},
        {{SocketMessage::Connect, kErrorRefused}, SmtpStep::Connection, NotConnected},
        {{SocketMessage::Connect, kErrorTimedOut}, SmtpStep::Connection, NotConnected},
        {{SocketMessage::Connect, kErrorTimedOut}, SmtpStep::Greeting, NoGreeting},
        {{SocketMessage::Connect, kErrorTimedOut}, SmtpStep::Recipient, NoAnswer},
        {{SocketMessage::Connect, kErrorConnectionLost}, SmtpStep::Text, ConnectionLost},
        {{SocketMessage::Connect, kErrorCancelled}, SmtpStep::Connection, Stopped},
        {{SocketMessage::Connect, kErrorCancelled, SocketPeer::Proxy}, SmtpStep::Connection, Stopped},
        {{SocketMessage::UnknownProxy, kErrorHostNotFound, SocketPeer::Proxy},
         SmtpStep::Connection,
         MailProblem::UnknownProxy},
        {{SocketMessage::InvalidParameters, kErrorInvalidParameter, SocketPeer::Proxy},
         SmtpStep::Connection,
         ProxyNotConnected},
        {{SocketMessage::Connect, kErrorRefused, SocketPeer::Proxy}, SmtpStep::Connection, ProxyNotConnected},
        {{SocketMessage::ProxyNeedsLogin, 407, SocketPeer::Proxy}, SmtpStep::Connection, MailProblem::ProxyLogin},
        {{SocketMessage::ProxyLogin, kErrorAccessDenied, SocketPeer::Proxy},
         SmtpStep::Connection,
         MailProblem::ProxyLogin},
        {{SocketMessage::ProxyLogin, 401, SocketPeer::Proxy}, SmtpStep::Connection, MailProblem::ProxyLogin},
        {{SocketMessage::ProxyLogin, 403, SocketPeer::Proxy}, SmtpStep::Connection, ProxyRefused},
    };
    for (const Row& row : rows) {
        const MailFailure failure = FailureOf({.step = row.step, .code = CSmtp::kNoReply, .connection = row.error});
        EXPECT_EQ(failure.problem, row.expected) << row.error.what() << ' ' << row.error.code;
        EXPECT_EQ(failure.error, row.error.code);
    }
}

TEST(MailFailureTest, NamesWhatTheServerRefused) {
    struct Row {
        SmtpStep step;
        std::string reply;
        MailProblem expected;
        int refusedLogin = 0;
        bool hasUser = false;
    };
    using enum SmtpStep;
    const Row rows[] = {
        {Greeting, "554 no", NotReady},
        {Greeting, "SSH-2.0", NoMailServer},
        {Greeting, "100 what", NoMailServer},
        {Sender, "421 shutting down", NotReady},
        {Sender, "530 5.7.0 Must issue a STARTTLS command first", TlsWanted},
        {Sender, "530 5.7.0 Must issue a STARTTLS command first", TlsWanted, 503, true},
        {Login, "538 encryption required", TlsWanted, 538, true},
        {Sender, "250 says starttls", SenderRefused},
        {Sender, "530 login please", LoginWanted},
        {Sender, "530 login please", LoginImpossible, 504, true},
        {Sender, "530 login please", LoginRefused, 535, true},
        {Recipient, "550 no", LoginRefused, 535, true},
        {Recipient, "450 later", RecipientRefused, 535, true},
        {Recipient, "550 no such user", RecipientRefused, 502, true},
        {Recipient, "550 relay not permitted", RelayDenied},
        {Recipient, "554 5.7.1 Relaying denied", RelayDenied},
        {Recipient, "551 user not local", RelayDenied},
        {Recipient, "550 authentication required", LoginWanted},
        {Sender, "550 no", SenderRefused},
        {Sender, "552 size", TooLarge},
        {Text, "552 size", TooLarge},
        {Text, "554 spam", TextRefused},
        {Data, "554 no", TextRefused},
    };
    for (const Row& row : rows) {
        const MailFailure failure = FailureOf({.step = row.step,
                                               .code = std::atoi(row.reply.c_str()),
                                               .reply = row.reply,
                                               .connection = {},
                                               .refusedLogin = row.refusedLogin,
                                               .hasUser = row.hasUser});
        EXPECT_EQ(failure.problem, row.expected) << row.reply << ' ' << row.refusedLogin;
    }
    // What was said before the connection broke.
    const SocketError lost(SocketMessage::Connect, kErrorConnectionLost);
    EXPECT_EQ(FailureOf({.step = Text, .code = -1, .reply = "552 size", .connection = lost}).problem, TooLarge);
    EXPECT_EQ(FailureOf({.step = Text, .code = -1, .reply = "250 ok", .connection = lost}).problem, ConnectionLost);
    // When all of the message is out, nobody knows unless the server said so.
    SmtpEnd end{.step = Text, .code = -1, .reply = "552 size", .connection = lost, .isTextSent = true};
    EXPECT_EQ(FailureOf(end).problem, TooLarge);
    for (const std::uint32_t error : {kErrorConnectionLost, kErrorTimedOut, kErrorCancelled}) {
        end.reply.clear();
        end.connection = SocketError(SocketMessage::Connect, error);
        EXPECT_EQ(FailureOf(end).problem, Unconfirmed) << error;
    }
}

TEST(MailFailureTest, SaysItInOneSentence) {
    const Language english(nullptr);
    MailFailure failure{.problem = RecipientRefused, .code = 550, .reply = "550 no such user"};
    EXPECT_EQ(DescribeFailure(failure, english),
              "The mail server refused the recipient. Check the recipient's address. (550 no such user)");
    failure = {.problem = NotConnected, .error = 10061};
    EXPECT_EQ(DescribeFailure(failure, english),
              "The mail server takes no connection. Check its name and its port, and whether a firewall is in "
              "between. (error 10061)");
    failure = {.problem = Stopped, .error = kErrorCancelled};
    EXPECT_EQ(DescribeFailure(failure, english), "Stopped: the mail was not sent.");
    // What a server says is cut, and has no line ends.
    const SmtpEnd end{.step = SmtpStep::Text, .code = 554, .reply = "554-a\r\n554 " + std::string(2000, 'x')};
    const std::string text = DescribeFailure(FailureOf(end), english);
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos);
    EXPECT_LT(text.size(), 400U);
}

TEST(MailAccountTest, TakesServerAndPortFromOneText) {
    EXPECT_EQ(ParseMailHost(" mail.example "), (MailHost{"mail.example", 25}));
    EXPECT_EQ(ParseMailHost("127.0.0.1:2525"), (MailHost{"127.0.0.1", 2525}));
    EXPECT_EQ(ParseMailHost("a:65535"), (MailHost{"a", 65535}));
    for (const char* text : {"", " ", ":25", "a:", "a:0", "a:65536", "a:25x", "a:2:5"}) {
        EXPECT_FALSE(ParseMailHost(text)) << text;
    }
}

}  // namespace
}  // namespace brennvar
