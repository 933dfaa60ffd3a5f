#include "mail/Smtp.h"

#include <gtest/gtest.h>

#include "support/FakeTransport.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using test::FakeClock;
using test::FakePeer;

// Records what it is told, and answers as it was set.
class RecordingSmtp final : public CSmtp {
public:
    using CSmtp::CSmtp;

    std::vector<std::string> told;
    int answerToWarnings = 0;
    int warningsAnswered = 100;  // so many; then 0
    std::vector<std::pair<std::uint64_t, std::uint64_t>> progress;
    std::uint64_t stopsAt = ~0ULL;

private:
    int OnWarning(int code, const std::string& reply) override {
        told.push_back("warning " + std::to_string(code) + " " + reply);
        return warningsAnswered-- > 0 ? answerToWarnings : 0;
    }
    void OnError(int code, const std::string& reply) override {
        told.push_back("error " + std::to_string(code) + " " + reply);
        CSmtp::OnError(code, reply);
    }
    void OnReply(std::string_view command, int code, const std::string& reply) override {
        told.push_back("reply " + std::string(command) + "-> " + std::to_string(code) + " " + reply);
    }
    bool OnProgress(std::string_view, std::uint64_t sent, std::uint64_t total) override {
        progress.emplace_back(sent, total);
        return sent < stopsAt;
    }
};

class SmtpTest : public testing::Test {
protected:
    FakeClock clock;
    FakePeer peer{clock};
    SmtpServer server{.host = "mail.example", .computerName = "pc"};
    std::optional<RecordingSmtp> smtp;
    MailMessage message;

    SmtpTest() {
        peer.names = {{"mail.example", "192.0.2.25"}, {"proxy.example", "192.0.2.31"}};
        message.from = {"", "a@b"};
        message.to = {{"", "c@d"}};
        message.texts.push_back({.text = "hi"});
    }
    RecordingSmtp& Make() { return smtp.emplace(peer.Transport(), clock, server); }
    // Begins a dialogue anew.
    void Greets(const std::string& hello = "250 ok\r\n") {
        peer.script.clear();
        peer.sent.clear();
        peer.Say("", {"220 hello\r\n"});
        peer.Say("EHLO pc\r\n", {hello});
    }
    void AsksForLogin(const std::string& outcome) {
        peer.Say("AUTH LOGIN\r\n", {"334 VXNlcm5hbWU6\r\n"});  // "Username:"
        peer.Say("ZnJlZA==\r\n", {"334 cGFzc3dvcmQ6\r\n"});    // "fred"; "password:"
        peer.Say("czNjcmV0\r\n", {outcome});                   // "s3cret"
    }
    void SetLogin() {
        server.user = "fred";
        server.password = Password("s3cret");
    }
    void TakesTheRest() {
        peer.Say("MAIL FROM: <a@b>\r\n", {"250 ok\r\n"});
        peer.Say("RCPT TO: <c@d>\r\n", {"250 ok\r\n"});
        peer.Say("DATA\r\n", {"354 go on\r\n"});
        peer.Say("\r\n.\r\n", {"250 taken\r\n"});
        peer.Say("QUIT\r\n", {"221 bye\r\n"});
    }
    // What was sent, without the text of the message.
    [[nodiscard]] std::string Commands() const {
        const std::size_t begin = peer.sent.find("DATA\r\n");
        if (begin == std::string::npos) return peer.sent;
        const std::size_t end = peer.sent.find("\r\n.\r\n", begin);
        return peer.sent.substr(0, begin + 6) + peer.sent.substr(std::min(end, peer.sent.size()));
    }
};

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

TEST_F(SmtpTest, TakesNoOtherGreetingThan220) {
    for (const std::string greeting : {"554 no\r\n", "SSH-2.0\r\n", "\n"}) {
        peer.sent.clear();
        peer.script.clear();
        peer.Say("", {greeting});
        EXPECT_NE(Make().Deliver(message), 0) << greeting;
        EXPECT_EQ(peer.sent, "");
        EXPECT_TRUE(smtp->told.back().starts_with("error ")) << greeting;
    }
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

TEST_F(SmtpTest, CutsAReplyAtItsLastLineFeed) {
    struct Row {
        std::vector<std::string> pieces;
        int code;
        std::string reply;
    };
    const Row rows[] = {
        {{"250 ok\r\n"}, 250, "250 ok"},
        {{"250-a\r\n250 b\r\n"}, 250, "250-a\r\n250 b"},
        {{"2", "5", "0 ok\r", "\n"}, 250, "250 ok"},
        {{"250-a\r\n25"}, 250, "250-a"},  // complete with its first line feed; the rest is discarded
        {{"250 ok\n"}, 250, "250 o"},     // whatever stands before the line feed
        {{"\n"}, 0, ""},
        {{"  250 ok\r\n"}, 250, "  250 ok"},
        {{"-250 ok\r\n"}, 0, "-250 ok"},
        {{"99999999999999 ok\r\n"}, 0, "99999999999999 ok"},
        {{std::string("25\0", 3) + "0\r\n"}, 25, std::string("25\0", 3) + "0"},
        {{std::string(1023, '1') + "\r\n"}, 0, std::string(1023, '1') + "\r"},  // 1024 bytes without a line feed
        {{"250 " + std::string(2000, 'x')}, 250, "250 " + std::string(1020, 'x')},
    };
    for (const Row& row : rows) {
        Greets();
        FakePeer::Exchange exchange{.until = "NOOP\r\n", .pieces = {}};
        for (const std::string& piece : row.pieces) exchange.pieces.push_back({.bytes = piece});
        peer.script.push_back(exchange);
        peer.Say("NEXT\r\n", {"123 next\r\n"});
        ASSERT_EQ(Make().Connect(), 1);
        EXPECT_EQ(smtp->SendCommand("NOOP\r\n"), row.code) << row.reply;
        EXPECT_EQ(smtp->LastReply(), row.reply);
        EXPECT_EQ(smtp->SendCommand("NEXT\r\n"), 123) << row.reply;
    }
    for (const std::size_t size : peer.readSizes) EXPECT_LE(size, 1024U);
}

TEST_F(SmtpTest, WaitsForTheRestOfAReplyBeforeTheNextCommand) {
    struct Row {
        std::vector<FakePeer::Piece> pieces;
        milliseconds waited;  // before the next command
        int code;             // of its reply
    };
    const auto ms = [](int count) { return milliseconds(count); };
    const Row rows[] = {
        {{{"250 ok\r\n"}}, ms(0), 123},
        {{{"250\r\n"}}, ms(0), 123},
        {{{"250-a\r\n250-b\r\n250 c\r\n"}}, ms(0), 123},
        {{{"250-a\r\n"}, {"250-b\r\n"}, {"250 c\r\n", ms(400)}}, ms(400), 123},
        {{{"250-a\r\n2"}, {"50", ms(200)}, {" c\r\n", ms(299)}}, ms(499), 123},
        {{{"250 a\r\n2"}, {"20 b\r\n", ms(100)}}, ms(100), 123},  // whole, and then some
        {{{"250-a\r\n"}, {"250-b\r\n", ms(300)}, {"250-c\r\n", ms(190)}, {"250-d\r\n", ms(11)}}, ms(500), 250},
        {{{"250x\r\n"}, {"25 \r\n", ms(400)}, {"2500\r\n", ms(99)}}, ms(500), 123},  // end no reply
    };
    for (const Row& row : rows) {
        Greets();
        peer.script.push_back({.until = "NOOP\r\n", .pieces = row.pieces});
        peer.Say("NEXT\r\n", {"123 next\r\n"});
        ASSERT_EQ(Make().Connect(), 1);
        ASSERT_EQ(smtp->SendCommand("NOOP\r\n"), 250);
        const milliseconds before = clock.elapsed;
        peer.receiveLimits.clear();
        peer.whenReceiving = [&] {
            if (!peer.sent.ends_with("NEXT\r\n")) return;
            EXPECT_EQ(clock.elapsed - before, row.waited) << row.pieces.back().bytes;
            peer.whenReceiving = [] {};
        };
        EXPECT_EQ(smtp->SendCommand("NEXT\r\n"), row.code) << row.pieces.back().bytes;
        if (row.waited == ms(0)) {
            EXPECT_EQ(peer.receiveLimits.front(), ms(0));
        }
    }
}

TEST_F(SmtpTest, WaitsForWholeSeconds) {
    Greets();
    peer.script.push_back(
        {.until = "A\r\n", .pieces = {{"25", milliseconds(1900)}, {"0\r\n", milliseconds(28'900)}}});
    peer.script.push_back(
        {.until = "B\r\n", .pieces = {{"25", milliseconds(1900)}, {"0\r\n", milliseconds(29'001)}}});
    peer.closesAtEnd = false;
    ASSERT_EQ(Make().Connect(), 1);
    peer.receiveLimits.clear();
    EXPECT_EQ(smtp->SendCommand("A\r\n"), 250);
    EXPECT_EQ(peer.receiveLimits,
              (std::vector<milliseconds>{milliseconds(0), milliseconds(30'000), milliseconds(29'000)}));
    EXPECT_EQ(smtp->SendCommand("B\r\n"), 25);  // what there was
    EXPECT_EQ(smtp->LastReply(), "25");

    Greets();
    peer.script.push_back({.until = "C\r\n", .pieces = {{"250\r\n", milliseconds(30'001)}}});
    ASSERT_EQ(Make().Connect(), 1);
    const milliseconds before = clock.elapsed;
    EXPECT_EQ(smtp->SendCommand("C\r\n"), CSmtp::kNoReply);
    EXPECT_EQ(clock.elapsed - before, milliseconds(30'000));
    EXPECT_EQ(smtp->ConnectionError()->code, kErrorTimedOut);
}

TEST_F(SmtpTest, WaitsTwoSecondsForTheFarewell) {
    Greets();
    TakesTheRest();
    peer.script.pop_back();
    peer.script.push_back({.until = "QUIT\r\n", .pieces = {{"221 bye\r\n", milliseconds(25'000)}}});
    const milliseconds before = clock.elapsed;
    EXPECT_EQ(Make().Deliver(message), 0);
    EXPECT_EQ(clock.elapsed - before, milliseconds(2000));
}

TEST_F(SmtpTest, KnowsWhetherTheWholeMessageWentOut) {
    Greets();
    TakesTheRest();
    peer.script.resize(peer.script.size() - 2);
    peer.Say("\r\n.\r\n", {});  // and closes
    EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
    EXPECT_TRUE(smtp->IsTextSent());
}

TEST_F(SmtpTest, EndsWithTheConnection) {
    Greets();
    peer.Say("MAIL FROM: <a@b>\r\n", {"421 bye"});  // and closes
    EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
    EXPECT_EQ(smtp->LastReply(), "421 bye");
    EXPECT_EQ(smtp->ConnectionError()->code, kErrorConnectionLost);
    EXPECT_EQ(smtp->told.back(), "error -1 421 bye");
    EXPECT_EQ(peer.sent, "EHLO pc\r\nMAIL FROM: <a@b>\r\n");  // no QUIT

    // With a line end it is a reply; the next step finds out.
    Greets();
    peer.Say("MAIL FROM: <a@b>\r\n", {"250 ok\r\n"});
    peer.Say("RCPT TO: <c@d>\r\n", {"421 bye\r\n"});
    EXPECT_EQ(Make().Deliver(message), 421);

    peer.names.clear();
    EXPECT_EQ(Make().Deliver(message), CSmtp::kNoReply);
    EXPECT_EQ(smtp->ConnectionError()->code, kErrorHostNotFound);
    EXPECT_EQ(smtp->Step(), SmtpStep::Connection);
}

TEST_F(SmtpTest, AServerThatNeverStopsTalkingIsNotHeardForEver) {
    Greets();
    // 10 MB of a reply without a line end.
    FakePeer::Exchange flood{.until = "MAIL FROM: <a@b>\r\n", .pieces = {}};
    for (int i = 0; i < 1024; ++i) flood.pieces.push_back({.bytes = std::string(10'240, '2')});
    peer.script.push_back(flood);
    peer.Say("RSET\r\n", {"250 ok\r\n"});
    ASSERT_EQ(Make().Connect(), 1);
    EXPECT_EQ(smtp->SendCommand("MAIL FROM: <a@b>\r\n"), 0);
    EXPECT_EQ(smtp->LastReply().size(), 1024U);
    EXPECT_EQ(smtp->SendCommand("RSET\r\n"), 250);  // all of it has been discarded

    Greets();
    FakePeer::Exchange endless{.until = "A\r\n", .pieces = {{"250 ok\r\n"}}};
    for (int i = 0; i < 4000; ++i) endless.pieces.push_back({.bytes = "222 222\r\n"});
    peer.script.push_back(endless);
    ASSERT_EQ(Make().Connect(), 1);
    EXPECT_EQ(smtp->SendCommand("A\r\n"), 250);
    peer.whenReceiving = [this] { clock.Pass(milliseconds(10)); };
    const milliseconds before = clock.elapsed;
    EXPECT_EQ(smtp->SendCommand("B\r\n"), CSmtp::kNoReply);
    EXPECT_LE(clock.elapsed - before, milliseconds(30'010));
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

TEST_F(SmtpTest, KeepsWhatTheServerSaidWhenItCloses) {
    const test::TempFolder folder;
    message.files.push_back({.path = folder.Write("f", std::string(30'000, 'a')), .name = "f"});
    Greets();
    peer.Say("MAIL FROM: <a@b>\r\n", {"250 ok\r\n"});
    peer.Say("RCPT TO: <c@d>\r\n", {"250 ok\r\n"});
    peer.Say("DATA\r\n", {"354 go on\r\n"});
    peer.Say("YWFhYWFhYWFhYWFh", {"552 too large\r\n"});
    Make();
    peer.sendErrors[8] = kErrorConnectionLost;
    EXPECT_EQ(smtp->Deliver(message), CSmtp::kNoReply);
    EXPECT_EQ(smtp->LastReply(), "552 too large\r\n");
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
