#include "logs/LogDetails.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/FakeIni.h"
#include "support/HexBytes.h"

namespace brennvar {
namespace {

const Language kEnglish(std::make_unique<test::FakeIni>(test::FakeIni::Values()));

std::string Lines(const DetailsSheet& sheet) {
    std::string text = TextOf(sheet);
    std::erase(text, '\r');
    return text;
}

// 12:04:05, denied, TCP from 192.168.1.10:49152 to 93.184.216.34:443.
TrafficLogRecord DeniedRecord() {
    TrafficLogRecord record{};
    record.hour = 12;
    record.minute = 4;
    record.second = 5;
    record.action = 2;
    record.protocol = 6;
    record.outgoing = 1;
    record.localAddress = 0x0A01A8C0;
    record.localPort = 49152;
    record.remoteAddress = 0x22D8B85D;
    record.remotePort = 443;
    record.value = 255;
    record.kind = 1;
    PutText(record.path, R"(c:\programs\mail.exe)");
    PutText(record.text1, "first");
    return record;
}

TEST(LogDetailsTest, TellsAnEventWithItsAddresses) {
    const DetailsSheet sheet = DescribeLogRecord(
        DeniedRecord(), {.localName = {}, .remoteName = "www.example", .localHardware = {}, .remoteHardware = {}},
        kEnglish);
    EXPECT_EQ(sheet.title, "Log details");
    EXPECT_EQ(sheet.address, 0x22D8B85DU) << "the other side";
    EXPECT_EQ(Lines(sheet),
              "Event\n"
              "Time: 12:04:05\n"
              "Action: Denied\n"
              "Protocol: TCP\n"
              "Direction: outgoing, from this computer\n"
              "Process: c:\\programs\\mail.exe\n"
              "\n"
              "Addresses\n"
              "Local/Remote IP: 192.168.1.10:49152 -> 93.184.216.34:443\n"
              "Local/Remote domain: unknown -> www.example\n"
              "Local/Remote MAC: unknown\n"
              "Service: 443 (HTTPS - Secure web connection)\n"
              "\n"
              "Further data\n"
              "First text: first\n"
              "Value: 255 (0x000000ff)\n");
    EXPECT_EQ(sheet.groups[0].lines[1].tone, Tone::Deny);
}

TEST(LogDetailsTest, ShowsTheNameOfAnEventWithoutAddresses) {
    TrafficLogRecord record = DeniedRecord();
    PutText(record.shortText, "Port scan");
    for (const std::uint32_t kind : {0U, 2U, 1U, 3U}) {
        record.kind = kind;
        const DetailsSheet sheet = DescribeLogRecord(record, {}, kEnglish);
        const std::string text = Lines(sheet);
        EXPECT_EQ(text.find("Addresses") != std::string::npos, kind % 2 == 1) << kind;
        EXPECT_EQ(sheet.address != 0, kind % 2 == 1) << kind;
        EXPECT_NE(text.find("Rule or event: Port scan\n"), std::string::npos) << kind;
    }
}

TEST(LogDetailsTest, NamesActionsAndProtocolsAsTheListDoes) {
    TrafficLogRecord record = DeniedRecord();
    const std::pair<std::uint32_t, const char*> actions[] = {{1, "Allowed"},  {3, "Asked"},   {4, "Disconnected"},
                                                             {5, "Allowed"},  {0, "Message"}, {6, "Message"},
                                                             {~0U, "Message"}};
    for (const auto& [action, name] : actions) {
        record.action = action;
        EXPECT_EQ(DescribeLogRecord(record, {}, kEnglish).groups[0].lines[1].value, name) << action;
    }
    const std::pair<std::uint32_t, const char*> protocols[] = {{0, "IP"},    {1, "ICMP"},    {17, "UDP"},
                                                               {806, "ARP"}, {2, "Any (2)"}, {0x806, "Any (2054)"}};
    for (const auto& [protocol, name] : protocols) {
        record.protocol = protocol;
        EXPECT_EQ(DescribeLogRecord(record, {}, kEnglish).groups[0].lines[2].value, name) << protocol;
    }
}

TEST(LogDetailsTest, TakesAnyBytesOfARecord) {
    TrafficLogRecord record;
    std::memset(&record, 0xFF, sizeof(record));  // texts without an end, numbers out of range
    const DetailsSheet sheet = DescribeLogRecord(record, {}, kEnglish);
    EXPECT_EQ(sheet.groups[0].lines[0].value, "00:00:00");
    EXPECT_EQ(sheet.groups[0].lines.back().value, std::string(259, '\xFF'));
    EXPECT_NE(TextOf(sheet).find("255.255.255.255:4294967295"), std::string::npos);
    // Texts of the log, and names of other machines, stay in their lines.
    record = DeniedRecord();
    PutText(record.path, "c:\\a.exe\r\nAction: Allowed");
    record.outgoing = 0;
    const std::string text = Lines(DescribeLogRecord(
        record, {.localName = "a\nb", .remoteName = {}, .localHardware = {}, .remoteHardware = {}}, kEnglish));
    EXPECT_NE(text.find("Process: c:\\a.exe  Action: Allowed\n"), std::string::npos);
    EXPECT_NE(text.find("Local/Remote domain: a b <- unknown\n"), std::string::npos);
    // The port that was called: the local one.
    EXPECT_NE(text.find("Service: 49152\n"), std::string::npos);
}

TEST(LogDetailsTest, TellsAPacketWithItsBytes) {
    PacketLogHeader header{};
    header.protocol = kLogProtocolArp;
    header.localAddress = 0x0A01A8C0;
    header.remoteAddress = 0x0101A8C0;
    header.packetSize = 28;
    const auto bytes =
        test::FromHex("00 01 08 00 06 04 00 01 00 1b ac 3d 4e ff c0 a8 01 0a 00 00 00 00 00 00 c0 a8 01 01 ff ff");
    DetailsSheet sheet = DescribePacket(header, bytes, {}, kEnglish);
    EXPECT_EQ(sheet.title, "Packet data");
    EXPECT_EQ(sheet.address, 0x0101A8C0U);
    ASSERT_EQ(sheet.groups.size(), 3U);
    EXPECT_EQ(sheet.groups[1].lines[0].value, "192.168.1.10 <- 192.168.1.1");
    EXPECT_EQ(sheet.groups[2].heading, "ARP packet");
    // What stands behind the packet in the file is another record.
    EXPECT_EQ(sheet.bytesHeading, "Captured bytes: 28");
    EXPECT_EQ(sheet.bytes.size(), 2U);
    EXPECT_EQ(TextOf(sheet).find("ff ff"), std::string::npos);
    header.packetSize = ~0U;
    EXPECT_EQ(DescribePacket(header, bytes, {}, kEnglish).bytesHeading, "Captured bytes: 30 / 4294967295");
    header.packetSize = 0;
    sheet = DescribePacket(header, bytes, {}, kEnglish);
    EXPECT_EQ(sheet.bytesHeading, "Captured bytes: 0");
    EXPECT_TRUE(sheet.bytes.empty());
    header.packetSize = 70'000;
    sheet = DescribePacket(header, std::vector<std::byte>(70'000), {}, kEnglish);
    EXPECT_EQ(sheet.bytesHeading, "Captured bytes: 70000, shown: 65549");
    EXPECT_EQ(sheet.bytes.size(), 4097U);
}

}  // namespace
}  // namespace brennvar
