#include "tools/Whois.h"

#include <gtest/gtest.h>

#include "support/FakeTransport.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using test::FakeClock;
using test::FakePeer;

class PrintedLines final : public ToolOutput {
public:
    std::vector<std::string> lines;
    std::vector<std::string> takenBack;
    void Print(const std::string& line) override { lines.push_back(line); }
    void Clear() override {
        takenBack = lines;
        lines.clear();
    }
};

class WhoisTest : public testing::Test {
protected:
    FakeClock clock;
    FakePeer peer{clock};
    CWSocket socket{peer.Transport(), clock};
    ProxySettings proxy;
    PrintedLines output;
    const Language language{nullptr};

    WhoisTest() { peer.names = {{"whois.arin.net", "192.0.2.1"}, {"whois.ripe.net", "192.0.2.2"}}; }
    std::vector<std::string> LookUp(const std::string& text) {
        Whois(socket, proxy).LookUp(text, language, output);
        return output.lines;
    }
};

using Lines = std::vector<std::string>;

TEST_F(WhoisTest, AsksTheFirstServerAndShowsItsAnswerInPlaceOfTheWaitingLine) {
    peer.Say("+ 198.51.100.7\r\n",
             {"NetRange: 198.51", ".100.0\r\n\r\n   OrgName: Test  \n\t\n", "Ref:\t8\nno end"});
    EXPECT_EQ(LookUp("198.51.100.7"), (Lines{"NetRange: 198.51.100.0", "OrgName: Test", "Ref: 8", "no end"}));
    EXPECT_EQ(output.takenBack, Lines{"Getting data, please wait..."});
    EXPECT_EQ(peer.sent, "+ 198.51.100.7\r\n");
    EXPECT_EQ(peer.connections, (std::vector<FakePeer::Connection>{{"192.0.2.1", 43, milliseconds(10'000)}}));
    EXPECT_EQ(peer.closes, 1);
    for (const std::size_t size : peer.readSizes) EXPECT_EQ(size, 100U);
    for (const milliseconds limit : peer.receiveLimits) EXPECT_EQ(limit, milliseconds(30'000));
}

TEST_F(WhoisTest, AsksTheEuropeanRegistryWhereTheFirstAnswerNamesIt) {
    peer.Say("+ 192.0.2.9\r\n", {"# a remark: RIPE Network Coordination", " Centre\n"});
    peer.script.back().closes = true;
    peer.Say("192.0.2.9\r\n", {"inetnum: 192.0.2.0\n"});
    EXPECT_EQ(LookUp("192.0.2.9"), Lines{"inetnum: 192.0.2.0"});
    EXPECT_EQ(peer.sent, "+ 192.0.2.9\r\n192.0.2.9\r\n");
    EXPECT_EQ(peer.connections.back().address, "192.0.2.2");

    peer.Say("+ 192.0.2.9\r\n", {"RIPE network coordination centre\n"});  // not these letters
    EXPECT_EQ(LookUp("192.0.2.9"), Lines{"RIPE network coordination centre"});
}

TEST_F(WhoisTest, ResolvesNamesWithFewerThanThreeDots) {
    peer.names["www.example.com"] = "203.0.113.5";
    peer.Say("+ 203.0.113.5\r\n", {"x"});
    EXPECT_EQ(LookUp("www.example.com"), Lines{"x"});
    peer.Say("+ a.long.name.example\r\n", {"y"});
    EXPECT_EQ(LookUp("a.long.name.example"), Lines{"y"});
    EXPECT_EQ(peer.lookups, (Lines{"www.example.com", "whois.arin.net", "whois.arin.net"}));
    EXPECT_EQ(LookUp("no.such.name"),
              (Lines{"Unable to solve this address",
                     "This name was not found. Check its spelling and the connection to the Internet."}));
    const std::size_t asked = peer.connections.size();
    EXPECT_EQ(LookUp(std::string(300, 'a')).front(), "Invalid parameters");
    EXPECT_EQ(LookUp("1.2.3.4\r\n5.6.7.8").front(), "Invalid parameters");
    EXPECT_EQ(peer.connections.size(), asked);
}

TEST_F(WhoisTest, CutsAQueryAt511Bytes) {
    const std::string name = std::string(300, 'a') + "..." + std::string(300, 'b');
    peer.Say("bbb\r\n", {"x"});
    EXPECT_EQ(LookUp(name), Lines{"x"});
    EXPECT_EQ(peer.sent, "+ " + name.substr(0, 509) + "\r\n");
}

TEST_F(WhoisTest, ShowsAMegabyteWholeAndTellsWhatIsLeftOut) {
    const std::string line = std::string(63, 'x') + "\n";
    std::string megabyte;
    while (megabyte.size() < 1'048'576) megabyte += line;
    ASSERT_EQ(megabyte.size(), 1'048'576U);
    peer.Say("+ 192.0.2.9\r\n", {megabyte});
    EXPECT_EQ(LookUp("192.0.2.9").size(), 16384U);
    EXPECT_EQ(output.lines.back(), std::string(63, 'x'));

    peer.Say("+ 192.0.2.9\r\n", {megabyte + "y"});
    EXPECT_EQ(LookUp("192.0.2.9").size(), 16385U);
    EXPECT_EQ(output.lines.back(), "(The answer is longer than 1 MB. The rest is left out.)");
    EXPECT_EQ(peer.closes, 2);
}

TEST_F(WhoisTest, GivesUpAServerThatStalls) {
    peer.closesAtEnd = false;
    // Byte by byte is slow, but it goes on.
    FakePeer::Exchange slow{.until = "+ 192.0.2.9\r\n", .pieces = {}};
    for (const char c : std::string("half a line"))
        slow.pieces.push_back({.bytes = {c}, .after = milliseconds(29'999)});
    peer.script.push_back(slow);
    const milliseconds before = clock.elapsed;
    EXPECT_EQ(LookUp("192.0.2.9"),
              (Lines{"half a line", "connect() failed",
                     "The server did not answer in time. It may be busy, or a firewall stands in the way."}));
    EXPECT_EQ(clock.elapsed - before, milliseconds(11 * 29'999 + 30'000));
}

TEST(AnswerLinesTest, MakesControlCharactersBlanksAndBreaksEndlessLines) {
    EXPECT_EQ(AnswerLines(std::string_view("a\0b\x1B[2J\x7F\n\0\0\n\r\n c \xE9\n\n", 20)),
              (Lines{"a b [2J", "c \xE9"}));
    const std::string endless = std::string(1000, 'x') + std::string(1000, 'y') + "z";
    EXPECT_EQ(AnswerLines(endless), (Lines{std::string(1000, 'x'), std::string(1000, 'y'), "z"}));
    EXPECT_EQ(AnswerLines(std::string(1000, 'x') + "\n"), Lines{std::string(1000, 'x')});
    EXPECT_EQ(AnswerLines(""), Lines{});
}

}  // namespace
}  // namespace brennvar
