// What a server may answer, and how long it is waited for.
#include "support/TempFolder.h"
#include "unit/mail/SmtpRig.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using test::FakePeer;

class SmtpReplyTest : public test::SmtpRig {};

TEST_F(SmtpReplyTest, TakesNoOtherGreetingThan220) {
    for (const std::string greeting : {"554 no\r\n", "SSH-2.0\r\n", "\n"}) {
        peer.sent.clear();
        peer.script.clear();
        peer.Say("", {greeting});
        EXPECT_NE(Make().Deliver(message), 0) << greeting;
        EXPECT_EQ(peer.sent, "");
        EXPECT_TRUE(smtp->told.back().starts_with("error ")) << greeting;
    }
}

TEST_F(SmtpReplyTest, CutsAReplyAtItsLastLineFeed) {
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

TEST_F(SmtpReplyTest, WaitsForTheRestOfAReplyBeforeTheNextCommand) {
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

TEST_F(SmtpReplyTest, WaitsForWholeSeconds) {
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

TEST_F(SmtpReplyTest, WaitsTwoSecondsForTheFarewell) {
    Greets();
    TakesTheRest();
    peer.script.pop_back();
    peer.script.push_back({.until = "QUIT\r\n", .pieces = {{"221 bye\r\n", milliseconds(25'000)}}});
    const milliseconds before = clock.elapsed;
    EXPECT_EQ(Make().Deliver(message), 0);
    EXPECT_EQ(clock.elapsed - before, milliseconds(2000));
}

TEST_F(SmtpReplyTest, EndsWithTheConnection) {
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

TEST_F(SmtpReplyTest, AServerThatNeverStopsTalkingIsNotHeardForEver) {
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

TEST_F(SmtpReplyTest, KeepsWhatTheServerSaidWhenItCloses) {
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

}  // namespace
}  // namespace brennvar
