#include "logs/LogCells.h"

#include <gtest/gtest.h>

#include "logs/LogFilter.h"
#include "logs/LogListing.h"
#include "support/LogFileRig.h"

namespace brennvar {
namespace {

using test::Event;
using test::RawRecord;

const Language kEnglish{nullptr};
const LogTexts kTexts{kEnglish};

TrafficLogRecord Decode(std::string_view bytes) {
    return DecodeRecord<TrafficLogRecord>(std::as_bytes(std::span(bytes))).value();
}
std::string CellsOf(std::string_view bytes) {
    const TrafficLogRecord record = Decode(bytes);
    std::string text;
    for (const std::string& cell : RowOf(EntryOf(record), kTexts).cells) text += cell + '|';
    return text;
}

TEST(LogCellsTest, ShowsWhatARecordSays) {
    const std::string ports = "10.0.0.5:1025 -> 93.184.216.34:443";
    const std::pair<RawRecord, std::string> rows[] = {
        {Event(1, 14, 2, 11), "14:02:11|Allowed|TCP|" + ports + "|app.exe|Web rule|"},
        {Event(2, 23, 59, 59).U32(144, 0), "23:59:59|Denied|IP|" + ports + "|app.exe|Web rule|"},
        {Event(3, 0, 0, 9).U32(144, 1), "00:00:09|Asked|ICMP|" + ports + "|app.exe|Web rule|"},
        {Event(4, 24, 0, 0).U32(144, 17), "00:00:00|Disconnected|UDP|" + ports + "|app.exe|Web rule|"},
        {Event(5, 1, 60, 0).U32(144, 806), "00:00:00|Allowed|ARP|" + ports + "|app.exe|Web rule|"},
        {Event(6, 1, 0, 60).U32(144, 2), "00:00:00|Message|Any|" + ports + "|app.exe|Web rule|"},
        // The ether type of ARP is not its number here.
        {Event(0, 1, 2, 3).U32(144, 0x0806), "01:02:03|Message|Any|" + ports + "|app.exe|Web rule|"},
        {Event(1, 1, 2, 3).U32(148, 0),
         "01:02:03|Allowed|TCP|10.0.0.5:1025 <- 93.184.216.34:443|app.exe|Web rule|"},
        {Event(1, 1, 2, 3).U32(148, 7), "01:02:03|Allowed|TCP|" + ports + "|app.exe|Web rule|"},
        {Event(1, 1, 2, 3).U32(472, 0), "01:02:03|Allowed|TCP|Web rule|app.exe|Web rule|"},
        {Event(1, 1, 2, 3).U32(472, 2), "01:02:03|Allowed|TCP|Web rule|app.exe|Web rule|"},
        {Event(1, 1, 2, 3).U32(472, 3), "01:02:03|Allowed|TCP|" + ports + "|app.exe|Web rule|"},
        // Ports and addresses of any size, a path without backslash, a character that would break the line.
        {Event(1, 1, 2, 3, "x").U32(156, 0xFFFFFFFF).U32(160, 0xFFFFFFFF).Text(112, "a\nb\tc").Text(169, {"\0", 1}),
         "01:02:03|Allowed|TCP|10.0.0.5:4294967295 -> 255.255.255.255:443|x|a b cule|"}};
    for (const auto& [bytes, cells] : rows) EXPECT_EQ(CellsOf(bytes), cells);
    // Texts without their zero end with their fields.
    const auto endless = Event(1, 1, 2, 3, std::string(260, 'p')).Text(112, std::string(32, 's')).U32(472, 0);
    EXPECT_EQ(CellsOf(endless), "01:02:03|Allowed|TCP|" + std::string(31, 's') + '|' + std::string(259, 'p') + '|' +
                                    std::string(31, 's') + '|');
}

TEST(LogCellsTest, FindsATextInAnyCell) {
    const TrafficLogRecord record = Decode(Event(2, 14, 2, 11));
    const TrafficLogRecord message = Decode(Event(6, 14, 2, 11, "").U32(472, 0));
    struct Row {
        const char* searched;
        bool isFound;
        bool isInMessage;
    };
    const Row rows[] = {
        {"14:02", true, true},
        {"14:03", false, false},
        {"DENIED", true, false},
        {"message", false, true},
        {"tcp", true, true},
        {"udp", false, false},
        {"1025 -> 93", true, false},  // part of the address cell
        {"<-", false, false},
        {"93.184.216.34:443", true, false},
        {"93.184.216.34:4433", false, false},
        {"APP.exe", true, false},
        {"program files", true, false},  // the path stands in the tip
        {"web RULE", true, true},
        {"rule|", false, false},
        {"11|denied", false, false},  // cells are searched one by one
        {"1", true, true},
        {"", true, true},
    };
    for (const Row& row : rows) {
        LogWish wish;
        wish.searched = row.searched;
        LogFilter filter(wish, kTexts);
        EXPECT_EQ(filter.Matches(EntryOf(record)), row.isFound) << row.searched;
        EXPECT_EQ(filter.Matches(EntryOf(message)), row.isInMessage) << row.searched;
    }
    PacketLogHeader packet{};
    packet.packetSize = 1500;
    for (const auto& [searched, isFound] : {std::pair("1500 BYTES", true),
                                            {"500 b", true},
                                            {"1500", true},
                                            {"message", false},
                                            {"any", false},
                                            {"ip", true},
                                            {"1500 bytess", false}}) {
        LogWish wish;
        wish.searched = searched;
        EXPECT_EQ(LogFilter(wish, kTexts).Matches(EntryOf(packet)), isFound) << searched;
    }
}

}  // namespace
}  // namespace brennvar
