#include "mail/Smtp.h"

#include "support/TempFolder.h"
#include "unit/mail/SmtpRig.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using test::FakePeer;

class SmtpTest : public test::SmtpRig {};

TEST_F(SmtpTest, SendsAMessageByteForByte) {
    Greets();
    TakesTheRest();
    message.cc = {{"", "e@f"}};
    message.bcc = {{"", "g@h"}};
    peer.script[3].pieces[0].bytes = "251 elsewhere\r\n";
    peer.script.insert(peer.script.begin() + 4, {.until = "RCPT TO: <e@f>\r\n", .pieces = {{"550 no\r\n"}}});
    peer.script.insert(peer.script.begin() + 5, {.until = "RCPT TO: <g@h>\r\n", .pieces = {{"250 ok\r\n"}}});
    EXPECT_EQ(Make().Deliver(message), 0);
    EXPECT_EQ(peer.connections, (std::vector<FakePeer::Connection>{{"192.0.2.25", 25, milliseconds(30'000)}}));
    EXPECT_EQ(Commands(),
              "EHLO pc\r\nMAIL FROM: <a@b>\r\nRCPT TO: <c@d>\r\nRCPT TO: <e@f>\r\nRCPT TO: <g@h>\r\nDATA\r\n"
              "\r\n.\r\nQUIT\r\n");
    EXPECT_EQ(
        smtp->told,
        (std::vector<std::string>{
            "reply -> 220 220 hello", "reply EHLO pc\r\n-> 250 250 ok", "reply MAIL FROM: <a@b>\r\n-> 250 250 ok",
            "reply RCPT TO: <c@d>\r\n-> 251 251 elsewhere", "reply RCPT TO: <e@f>\r\n-> 550 550 no",
            "warning 550 550 no", "reply RCPT TO: <g@h>\r\n-> 250 250 ok", "reply DATA\r\n-> 354 354 go on",
            "reply \r\n.\r\n-> 250 250 taken", "reply QUIT\r\n-> 221 221 bye"}));
    EXPECT_TRUE(peer.sent.find("\r\n\r\nhi\r\n.\r\n") != std::string::npos) << peer.sent;
    EXPECT_EQ(peer.closes, 1);
}

TEST_F(SmtpTest, SendsASimpleMailInLatin1) {
    Greets();
    TakesTheRest();
    peer.script.insert(peer.script.begin() + 4, {.until = "RCPT TO: <e@f>\r\n", .pieces = {{"250 ok\r\n"}}});
    EXPECT_EQ(Make().SendMail({"", "a@b"}, {"", "c@d"}, "S", "\xFC", {{"", "e@f"}}, {}), 0);
    EXPECT_NE(peer.sent.find("Subject: S\r\nTo: <c@d>,\r\n\t<e@f>\r\nFrom: <a@b>\r\nContent-Type: text/plain;\r\n"
                             "\tcharset=\"iso-8859-1\"\r\nContent-Transfer-Encoding: quoted-printable\r\n"),
              std::string::npos)
        << peer.sent;
    EXPECT_NE(peer.sent.find("\r\n\r\n=FC\r\n.\r\n"), std::string::npos);
}

TEST_F(SmtpTest, GreetsAnOldServerWithHeloAndDoesNotLogIn) {
    SetLogin();
    Greets("500 what?\r\n");
    peer.Say("HELO pc\r\n", {"250 ok\r\n"});
    EXPECT_EQ(Make().Connect(), 1);
    EXPECT_EQ(peer.sent, "EHLO pc\r\nHELO pc\r\n");

    peer.sent.clear();
    server.triesExtendedGreeting = false;
    server.computerName = std::string(65, 'x');
    const std::string hello = "HELO " + std::string(64, 'x') + "\r\n";
    peer.Say("", {"220 hello\r\n"});
    peer.Say(hello, {"550 no\r\n"});
    EXPECT_EQ(Make().Connect(), 0);
    EXPECT_EQ(peer.sent, hello);
    EXPECT_EQ(smtp->told.back(), "error 550 550 no");
    EXPECT_EQ(smtp->Step(), SmtpStep::Greeting);
    EXPECT_EQ(smtp->Quit(), 0);  // not greeted: nothing is said
    EXPECT_EQ(peer.sent, hello);
}

TEST_F(SmtpTest, LogsInAndTellsThePasswordToNobodyElse) {
    SetLogin();
    Greets();
    AsksForLogin("235 welcome\r\n");
    TakesTheRest();
    EXPECT_EQ(Make().Deliver(message), 0);
    EXPECT_TRUE(Commands().starts_with("EHLO pc\r\nAUTH LOGIN\r\nZnJlZA==\r\nczNjcmV0\r\nMAIL FROM: "));
    EXPECT_EQ(smtp->told[4], "reply ********\r\n-> 235 235 welcome");
    EXPECT_EQ(smtp->RefusedLogin(), 0);
}

TEST_F(SmtpTest, ARefusedLoginIsTriedAgainWhenAskedTo) {
    SetLogin();
    Greets();
    AsksForLogin("535 wrong\r\n");
    AsksForLogin("235 welcome\r\n");
    TakesTheRest();
    Make().answerToWarnings = 1;
    EXPECT_EQ(smtp->Deliver(message), 0);
    EXPECT_EQ(std::count(smtp->told.begin(), smtp->told.end(), "warning 535 535 wrong"), 1);

    Greets();
    AsksForLogin("535 wrong\r\n");
    TakesTheRest();
    // The server takes the mail all the same.
    EXPECT_EQ(Make().Deliver(message), 0);
    EXPECT_EQ(smtp->told[5], "warning 535 535 wrong");
    EXPECT_EQ(smtp->told[6], "error 535 535 wrong");
    EXPECT_EQ(smtp->RefusedLogin(), 535);
}

TEST_F(SmtpTest, EndsALoginThatAsksForSomethingElse) {
    SetLogin();
    // "User Name" and a zero; no base64; nothing at all.
    for (const std::string challenge : {"334 VXNlciBOYW1lAA==\r\n", "334 %%\r\n", "334\r\n"}) {
        Greets();
        peer.Say("AUTH LOGIN\r\n", {challenge});
        peer.Say("*\r\n", {"501 cancelled\r\n"});
        EXPECT_EQ(Make().Connect(), 1);
        EXPECT_EQ(smtp->told.back(), "error 334 501 cancelled") << challenge;
        EXPECT_TRUE(peer.sent.ends_with("AUTH LOGIN\r\n*\r\n")) << challenge;
    }
    // One that asks for the same thing for ever.
    Greets();
    peer.Say("AUTH LOGIN\r\n", {"334 VXNlcm5hbWU6\r\n"});
    for (int i = 0; i < 4; ++i) peer.Say("ZnJlZA==\r\n", {"334 VXNlcm5hbWU6\r\n"});
    peer.Say("*\r\n", {"501 cancelled\r\n"});
    EXPECT_EQ(Make().Connect(), 1);
    EXPECT_EQ(smtp->told.back(), "error 334 501 cancelled");
}

TEST_F(SmtpTest, LogsInAsOftenAsTheSenderIsAnsweredWith530) {
    SetLogin();
    Greets();
    AsksForLogin("235 welcome\r\n");
    for (int i = 0; i < 3; ++i) {
        peer.Say("MAIL FROM: <a@b>\r\n", {"530 login\r\n"});
        AsksForLogin("235 welcome\r\n");
    }
    TakesTheRest();
    EXPECT_EQ(Make().Deliver(message), 0);

    // But not for ever.
    server.user.clear();
    Greets();
    for (int i = 0; i < 100; ++i) peer.Say("MAIL FROM: <a@b>\r\n", {"530 login\r\n"});
    peer.Say("QUIT\r\n", {"221 bye\r\n"});
    EXPECT_EQ(Make().Deliver(message), 530);
    std::string expected = "EHLO pc\r\n";
    for (int i = 0; i <= CSmtp::kMostLogins; ++i) expected += "MAIL FROM: <a@b>\r\n";
    EXPECT_EQ(peer.sent, expected + "QUIT\r\n");
    EXPECT_EQ(smtp->Step(), SmtpStep::Sender);
    EXPECT_EQ(smtp->LastReply(), "530 login");
}

TEST_F(SmtpTest, SendsNoDataWhenEveryRecipientIsRefused) {
    Greets();
    peer.Say("MAIL FROM: <a@b>\r\n", {"250 ok\r\n"});
    peer.Say("RCPT TO: <c@d>\r\n", {"550 no such user\r\n"});
    peer.Say("RCPT TO: <c@d>\r\n", {"450 later\r\n"});
    peer.Say("QUIT\r\n", {"221 bye\r\n"});
    Make().answerToWarnings = 1;
    smtp->warningsAnswered = 1;
    EXPECT_EQ(smtp->Deliver(message), 450);
    EXPECT_EQ(peer.sent, "EHLO pc\r\nMAIL FROM: <a@b>\r\nRCPT TO: <c@d>\r\nRCPT TO: <c@d>\r\nQUIT\r\n");
    EXPECT_EQ(smtp->told[6], "warning 450 450 later");
    EXPECT_EQ(smtp->told[7], "error 450 450 later");
    EXPECT_EQ(smtp->LastReply(), "450 later");
}

TEST_F(SmtpTest, SendsNothingWithoutLawfulAddresses) {
    const std::string evil[] = {"", "a@b>\r\nRCPT TO: <x@y", "a@b\n", std::string("a@b\0", 4)};
    for (const std::string& address : evil) {
        for (int place = 0; place < 3; ++place) {
            message.from.address = place == 0 ? address : "a@b";
            message.to[0].address = place == 1 ? address : "c@d";
            message.bcc = {{"", place == 2 ? address : "e@f"}};
            Greets();
            peer.Say("QUIT\r\n", {"221 bye\r\n"});
            EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
            EXPECT_EQ(peer.sent, "EHLO pc\r\nQUIT\r\n");
            EXPECT_TRUE(smtp->IsMessageUnfit());
        }
    }
    message.to.clear();
    message.bcc.clear();
    EXPECT_EQ(Make().SendEnvelopeAndData(message), CSmtp::kNoReply);
}

TEST_F(SmtpTest, KnowsWhetherTheWholeMessageWentOut) {
    Greets();
    TakesTheRest();
    peer.script.resize(peer.script.size() - 2);
    peer.Say("\r\n.\r\n", {});  // and closes
    EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
    EXPECT_TRUE(smtp->IsTextSent());
}

TEST_F(SmtpTest, TellsHowFarALongMessageIs) {
    const test::TempFolder folder;
    message.files.push_back({.path = folder.Write("f", std::string(3000, 'a')), .name = "f"});
    Greets();
    TakesTheRest();
    EXPECT_EQ(Make().Deliver(message), 0);
    ASSERT_FALSE(smtp->progress.empty());
    std::uint64_t before = 0;
    for (const auto& [sent, total] : smtp->progress) {
        EXPECT_LE(sent - before, 1024U);
        EXPECT_EQ(total, smtp->progress.back().first);
        before = sent;
    }
    for (const std::size_t size : peer.sendSizes) EXPECT_LE(size, 32U * 1024);

    // Given up in the middle: no end of the message, and no QUIT that would be its text.
    Greets();
    TakesTheRest();
    Make().stopsAt = 1500;
    EXPECT_EQ(smtp->Deliver(message), CSmtp::kNoReply);
    EXPECT_EQ(peer.sent.find("\r\n.\r\n"), std::string::npos);
    EXPECT_EQ(peer.sent.find("QUIT"), std::string::npos);
    EXPECT_TRUE(smtp->ConnectionError()->IsCancelled());
    EXPECT_FALSE(smtp->IsTextSent());
}

TEST_F(SmtpTest, AFileThatShrinksLeavesTheMessageUnsent) {
    const test::TempFolder folder;
    const std::string path = folder.Write("f", std::string(200'000, 'a'));
    message.files.push_back({.path = path, .name = "f"});
    Greets();
    TakesTheRest();
    peer.whenReceiving = [&] {
        if (peer.sent.ends_with("DATA\r\n")) std::filesystem::resize_file(path, 100);
    };
    EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
    EXPECT_TRUE(smtp->IsMessageUnfit());
    EXPECT_EQ(peer.sent.find("\r\n.\r\n"), std::string::npos);

    std::filesystem::remove(path);
    peer.whenReceiving = [] {};
    Greets();
    peer.Say("QUIT\r\n", {"221 bye\r\n"});
    EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
    EXPECT_EQ(peer.sent, "EHLO pc\r\nQUIT\r\n");
}

TEST_F(SmtpTest, GoesThroughAProxy) {
    server.proxy = {.host = "proxy.example", .port = 3128, .user = "u", .password = "p"};
    peer.Say("", {});
    peer.Say("\r\n\r\n", {"HTTP/1.1 200 ok\r\n\r\n220 hello\r\n"});
    peer.Say("EHLO pc\r\n", {"250 ok\r\n"});
    EXPECT_EQ(Make().Connect(), 1);
    EXPECT_TRUE(
        peer.sent.starts_with("CONNECT mail.example:25 HTTP/1.1\r\nHost: mail.example:25\r\n"
                              "Proxy-Authorization: Basic dTpw\r\n\r\nEHLO pc\r\n"))
        << peer.sent;
}

}  // namespace
}  // namespace brennvar
