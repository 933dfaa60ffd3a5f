#include "logs/LogListing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/GoldenCipher.h"
#include "support/LogFileRig.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;
using test::Event;
using test::Packet;
using Numbers = std::vector<std::uint32_t>;

const Language kEnglish{nullptr};
const LogTexts kTexts{kEnglish};

struct Pieces final : LogNewsSink {
    std::vector<LogNews> news;
    StopSignal* stopped = nullptr;  // by the first of them
    void Put(LogNews piece) override {
        news.push_back(std::move(piece));
        if (stopped != nullptr) stopped->Request();
    }
};

class LogListingTest : public testing::Test {
protected:
    test::DataFolder folder;
    StopSignal stop;
    LogPlace place;
    LogWish wish;

    void Write(std::string_view log) { place.path = folder.Write(R"(\Log\20260309.log)", log); }
    void WritePackets(std::string_view log) {
        place.path = folder.Write(R"(\Log\20260309_packet.log)", log);
        place.kind = LogKind::Packet;
    }
    LogNews List() {
        LogNewsBox box;
        ListLog(place, wish, kTexts, stop, box);
        LogNews news = box.Take();
        EXPECT_TRUE(news.isOver);
        if (news.packets) place.packets = news.packets;
        return news;
    }
    Numbers NumbersBy(LogColumn column, bool isAscending) {
        wish.sortedBy = column;
        wish.isAscending = isAscending;
        return List().numbers;
    }
};

TEST_F(LogListingTest, ListsTheWholeRecordsOfALogNewestFirst) {
    Write(std::string(Event(1, 1, 0, 0)) + 'x');  // 481 bytes
    LogNews news = List();
    EXPECT_TRUE(news.isAnew);
    EXPECT_EQ(news.plain, 1U);
    EXPECT_EQ(news.total, 1U);
    ASSERT_EQ(news.rows.size(), 1U);
    EXPECT_EQ(news.rows[0].second.cells[0], "01:00:00");
    Write(std::string(Event(1, 1, 0, 0)) + std::string(Event(2, 2, 0, 0)) + std::string(Event(5, 3, 4, 5)));
    news = List();
    EXPECT_EQ(news.plain, 3U);
    EXPECT_TRUE(news.numbers.empty());  // all of a log takes no memory
    EXPECT_EQ(news.rows.front().first, 2U);
    EXPECT_EQ(news.rows.back().first, 0U);
    EXPECT_EQ(news.tally.actions, (std::array<std::uint64_t, 5>{2, 1, 0, 0, 0}));
    EXPECT_EQ(news.tally.lastSecond, 3U * 3600 + 4 * 60 + 5);
    EXPECT_EQ(news.extent->count, 3U);
    place.path += ".gone";
    news = List();
    EXPECT_TRUE(news.isAnew && !news.extent->isThere);
    EXPECT_EQ(news.plain, 0U);
    Write("");
    EXPECT_TRUE(List().extent->isThere);
}

TEST_F(LogListingTest, FiltersSearchesAndSorts) {
    // By number: action, time, program, remote address.
    Write(std::string(Event(1, 3, 0, 0, R"(C:\b.exe)").Text(160, "\x02\x01\x01\x01")) +
          std::string(Event(2, 1, 0, 0, R"(C:\A.exe)").Text(160, "\x01\x01\x01\xFF")) +
          std::string(Event(5, 2, 0, 0, R"(C:\c.exe)").Text(160, "\xFF\x01\x01\x01")) +
          std::string(Event(9, 2, 0, 0, "").Text(112, "Zeta\0"sv).U32(472, 0)) +
          std::string(Event(3, 2, 0, 0, R"(D:\B.EXE)").Text(160, "\x01\x01\x02\x01")));
    wish.action = LogAction::Allowed;
    EXPECT_EQ(List().numbers, (Numbers{2, 0}));  // codes 1 and 5
    wish.action = LogAction::Message;
    EXPECT_EQ(List().numbers, (Numbers{3}));
    wish = {};
    wish.searched = "B.exe";
    EXPECT_EQ(List().numbers, (Numbers{4, 0}));
    EXPECT_EQ(List().tally.count, 5U);  // of all of the log
    wish = {};
    EXPECT_EQ(NumbersBy(LogColumn::Time, true), (Numbers{1, 4, 3, 2, 0}));  // equal ones as they were: newest first
    EXPECT_EQ(NumbersBy(LogColumn::Time, false), (Numbers{0, 4, 3, 2, 1}));
    EXPECT_EQ(NumbersBy(LogColumn::Action, true), (Numbers{2, 0, 4, 1, 3}));  // Allowed, Asked, Denied, Message
    EXPECT_EQ(NumbersBy(LogColumn::Program, true), (Numbers{3, 1, 4, 0, 2}));
    EXPECT_EQ(NumbersBy(LogColumn::Program, false), (Numbers{2, 4, 0, 1, 3}));
    EXPECT_EQ(NumbersBy(LogColumn::Address, true), (Numbers{3, 1, 4, 0, 2}));
    wish.searched = "exe";
    EXPECT_EQ(NumbersBy(LogColumn::Address, false), (Numbers{2, 0, 4, 1}));
    EXPECT_EQ(List().rows.front().first, 2U);
}

TEST_F(LogListingTest, HandsTheNewestOverBeforeTheRestHasBeenRead) {
    std::string log;
    for (std::uint32_t i = 0; i < 1000; ++i) log += Event(1, 0, 0, i % 60);
    Write(log);
    Pieces pieces;
    ListLog(place, wish, kTexts, stop, pieces);
    ASSERT_GE(pieces.news.size(), 2U);
    const LogNews& first = pieces.news.front();
    EXPECT_TRUE(first.isAnew && !first.isOver);
    EXPECT_EQ(first.plain, kFirstRows);
    EXPECT_EQ(first.rows.size(), std::size_t{kFirstRows});
    EXPECT_EQ(first.rows.front().first, 999U);
    EXPECT_EQ(first.rows.back().first, 900U);
    EXPECT_EQ(first.total, 1000U);
    LogNewsBox box;  // together they are the whole log
    for (const LogNews& news : pieces.news) box.Put(news);
    EXPECT_EQ(box.Take().plain, 1000U);
    EXPECT_EQ(box.Take().plain, 0U);
}

TEST_F(LogListingTest, StopsAtOnceAndSaysSo) {
    Write(Event(1, 1, 0, 0));
    stop.Request();
    LogNews news = List();
    EXPECT_TRUE(news.wasStopped);
    EXPECT_EQ(news.plain, 0U);
    WritePackets(Packet(6, 1, "abc"));
    EXPECT_TRUE(List().wasStopped);
    wish.sortedBy = LogColumn::Time;
    news = List();
    EXPECT_TRUE(news.wasStopped && !news.isAnew && !news.extent);  // what was listed before stays
}

TEST_F(LogListingTest, FollowsALogThatGrows) {
    Write(Event(1, 1, 0, 0));
    LogNews news = List();
    const LogExtent first = *news.extent;
    EXPECT_EQ(FollowLog(place, wish, kTexts, first)->tally.count, 0U);
    const std::string more = std::string(Event(2, 2, 0, 0)) + std::string(Event(3, 3, 0, 0));
    test::AppendTo(place.path, more.substr(0, 700));  // the service is still writing
    news = *FollowLog(place, wish, kTexts, first);
    EXPECT_EQ(news.plain, 1U);
    EXPECT_EQ(news.rows.at(0).first, 1U);
    test::AppendTo(place.path, more.substr(700));
    news = *FollowLog(place, wish, kTexts, *news.extent);
    EXPECT_EQ(news.plain, 1U);
    EXPECT_EQ(news.rows.at(0).second.cells[1], "Asked");
    wish.action = LogAction::Denied;
    news = *FollowLog(place, wish, kTexts, first);
    EXPECT_EQ(news.numbers, (Numbers{1}));
    EXPECT_EQ(news.tally.count, 2U);
    EXPECT_EQ(news.extent->count, 3U);
}

TEST_F(LogListingTest, ListsAnewWhatIsNotTheSameLog) {
    const std::string one(Event(1, 1, 0, 0));
    Write(one + one);
    const LogExtent extent = *List().extent;
    Write(one);
    EXPECT_FALSE(FollowLog(place, wish, kTexts, extent));  // shorter
    Write(one + std::string(Event(2, 1, 0, 0)) + one);
    EXPECT_FALSE(FollowLog(place, wish, kTexts, extent));  // written over
    const std::string other = folder.Write("other", one + one + one);
    std::filesystem::rename(other, place.path);
    EXPECT_FALSE(FollowLog(place, wish, kTexts, extent));  // put in its place
    std::filesystem::remove(place.path);
    EXPECT_FALSE(FollowLog(place, wish, kTexts, extent));
    const LogExtent none = *List().extent;
    EXPECT_TRUE(FollowLog(place, wish, kTexts, none));
    Write(one);
    EXPECT_FALSE(FollowLog(place, wish, kTexts, none));  // there is one now
}

TEST_F(LogListingTest, ReadsPacketsWhateverTheirHeadersSay) {
    const std::string first = Packet(6, 1, "") + Packet(17, 2, "abcde") + Packet(1, 3, std::string(300'000, 'p'));
    WritePackets(first + Packet(6, 4, "cut", 4'000'000'000) + Packet(6, 5, "never reached"));
    LogNews news = List();
    EXPECT_EQ(news.plain, 4U);
    EXPECT_EQ(news.extent->end, first.size() + 340 + 4'000'000'000);
    auto reader = LogReader::Open(place);
    auto packet = reader->ReadPacket(1);
    ASSERT_TRUE(packet);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(packet->captured.data()), packet->captured.size()),
              "abcde");
    EXPECT_EQ(reader->ReadPacket(2)->captured.size(), std::size_t{LogReader::kPacketLimit});
    packet = reader->ReadPacket(3);
    EXPECT_EQ(packet->header.packetSize, 4'000'000'000U);
    EXPECT_EQ(packet->captured.size(), 3U + 340 + 13);  // all that the file has
    EXPECT_EQ(reader->ReadPacket(0)->captured.size(), 0U);
    EXPECT_EQ(reader->Read(4), nullptr);
    // A header that the service is still writing is none yet.
    WritePackets(first + Packet(6, 4, "").substr(0, 339));
    EXPECT_EQ(List().plain, 3U);
}

TEST_F(LogListingTest, RedrawsWheneverThePositionIsAMultipleOf10240) {
    // 10,240 is one header and 9,900 bytes; the second packet ends elsewhere, the third there again.
    WritePackets(Packet(6, 1, std::string(9900, 'a')) + Packet(6, 2, std::string(100, 'b')) +
                 Packet(6, 3, std::string(10'240 - 680 - 100, 'c')) + Packet(17, 4, ""));
    wish.protocol = LogProtocol::Tcp;
    Pieces pieces;
    ListLog(place, wish, kTexts, stop, pieces);
    ASSERT_EQ(pieces.news.size(), 3U);
    EXPECT_EQ(pieces.news[0].numbers, (Numbers{0}));
    EXPECT_EQ(pieces.news[1].numbers, (Numbers{1, 2}));
    EXPECT_TRUE(pieces.news[2].numbers.empty() && pieces.news[2].isOver);
}

TEST_F(LogListingTest, FollowsPacketsAndFindsThemByNumber) {
    std::string log;
    for (std::uint32_t i = 0; i < 50; ++i) log += Packet(6, i, std::string(i * 7, 'x'));
    const std::string more = Packet(17, 50, "fifty") + Packet(17, 51, "one");
    WritePackets(log);
    LogNews news = List();
    test::AppendTo(place.path, more.substr(0, 342));
    news = *FollowLog(place, wish, kTexts, *news.extent);
    EXPECT_EQ(news.plain, 1U);
    test::AppendTo(place.path, more.substr(342));
    news = *FollowLog(place, wish, kTexts, *news.extent);
    EXPECT_EQ(news.extent->count, 52U);
    // Forwards, backwards and across the remembered places.
    auto reader = LogReader::Open(place);
    for (const std::uint32_t number : {51U, 0U, 17U, 16U, 49U, 48U, 15U, 33U, 50U}) {
        EXPECT_EQ(reader->ReadPacket(number)->header.second, number);
    }
}

TEST_F(LogListingTest, ReadsEncipheredRecordsWhenToldSo) {
    std::string log = std::string(Event(2, 5, 6, 7)) + std::string(Event(3, 8, 9, 10));
    // As far as it is known by hand; the rest of each record becomes anything.
    for (std::size_t i = 0; i < log.size(); ++i) {
        if (i % 480 < test::kKeystream.size()) log[i] = static_cast<char>(log[i] ^ test::kKeystream[i % 480]);
    }
    Write(log);
    place.cipher = Cipher::Enciphered;
    const LogNews news = List();
    EXPECT_EQ(news.rows.at(1).second.cells[0], "05:06:07");
    EXPECT_EQ(LogReader::Open(place)->ReadEvent(1)->action, 3U);
}

// Ten gigabytes, nearly all of them a hole.
TEST_F(LogListingTest, CopesWithTenGigabytes) {
    constexpr std::uint64_t kSize = std::uint64_t{10} << 30;
    Write("");
    std::filesystem::resize_file(place.path, kSize / 480 * 480);
    test::AppendTo(place.path, std::string(Event(2, 1, 2, 3)));
    const auto number = static_cast<std::uint32_t>(kSize / 480);
    EXPECT_EQ(LogReader::Open(place)->ReadEvent(number)->action, 2U);
    Pieces pieces;
    pieces.stopped = &stop;
    ListLog(place, wish, kTexts, stop, pieces);
    EXPECT_EQ(pieces.news.front().plain, kFirstRows);
    EXPECT_EQ(pieces.news.front().rows.front().first, number);
    EXPECT_EQ(pieces.news.front().total, number + 1U);
    EXPECT_TRUE(pieces.news.back().isOver && pieces.news.back().wasStopped);
    EXPECT_LE(pieces.news.back().plain, 1U);  // at the very next record
}

}  // namespace
}  // namespace brennvar
