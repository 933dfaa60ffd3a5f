#include "logs/PacketText.h"

#include <gtest/gtest.h>

#include <set>

#include "logs/LogRecords.h"
#include "support/FakeIni.h"
#include "support/HexBytes.h"

namespace brennvar {
namespace {

const Language kEnglish(std::make_unique<test::FakeIni>(test::FakeIni::Values()));

std::string TextOfGroups(std::vector<DetailsGroup> groups) {
    return TextOf(DetailsSheet{.title = {}, .groups = std::move(groups), .bytesHeading = {}, .bytes = {}});
}

std::string Describe(std::string_view hex, std::uint32_t protocol = 6) {
    std::string text = TextOfGroups(DescribePacketBytes(test::FromHex(hex), protocol, kEnglish));
    std::erase(text, '\r');
    return text;
}

// The first line that begins with the label, without it.
std::string Line(const std::string& text, const std::string& label) {
    const std::size_t at = ("\n" + text).find("\n" + label + " ");
    if (at == std::string::npos) return "(no line)";
    const std::size_t begin = at + label.size() + 1;
    return text.substr(begin, text.find('\n', begin) - begin);
}

// From 192.168.1.10:49152 to 93.184.216.34:443.
constexpr std::string_view kSyn =
    "45 00 00 3c 1c 46 40 00 40 06 26 e9 c0 a8 01 0a 5d b8 d8 22"
    "c0 00 01 bb 11 22 33 44 00 00 00 00 a0 02 fa f0 4b 78 00 00"
    "02 04 05 b4 04 02 08 0a 00 00 03 e8 00 00 00 00 01 03 03 07";
constexpr char kSynText[] =
    "IPv4 header\n"
    "Version: 4\n"
    "Header length (bytes): 20\n"
    "Type of service: 0x00 (CS0, Not-ECT)\n"
    "Total length (bytes): 60\n"
    "Identification: 7238 (0x1c46)\n"
    "Flags: 2 (do not fragment)\n"
    "Fragment offset (bytes): 0\n"
    "Time to live: 64\n"
    "Protocol: 6 (TCP)\n"
    "Checksum: 0x26e9, right\n"
    "Source address: 192.168.1.10\n"
    "Destination address: 93.184.216.34\n"
    "\n"
    "TCP header\n"
    "Source port: 49152\n"
    "Destination port: 443 (HTTPS - Secure web connection)\n"
    "Sequence number: 287454020\n"
    "Acknowledgement number: 0, not used\n"
    "Header length (bytes): 40\n"
    "Flags: 0x002 (SYN)\n"
    "Meaning: asks to open a connection\n"
    "Window: 64240\n"
    "Checksum: 0x4b78, right\n"
    "Urgent pointer: 0, not used\n"
    "Option: Maximum segment size (MSS): 1460\n"
    "Option: SACK permitted\n"
    "Option: Timestamps: 1000, echo 0\n"
    "Option: No operation\n"
    "Option: Window scale: 7\n"
    "Data (bytes): 0\n";

std::string With(std::string_view hex, std::size_t byte, std::string_view instead) {
    std::string changed(hex);
    std::erase(changed, ' ');
    return changed.replace(2 * byte, instead.size(), instead);
}

TEST(PacketTextTest, DescribesATcpPacketFieldByField) {
    EXPECT_EQ(Describe(kSyn), kSynText);
}

TEST(PacketTextTest, FindsChecksumsThatAreWrong) {
    const auto sums = [](const std::string& hex) {
        const std::string text = Describe(hex);
        return Line(text, "Checksum:") + "; " + Line(text.substr(text.find("TCP header")), "Checksum:");
    };
    EXPECT_EQ(sums(With(kSyn, 8, "41")), "0x26e9, wrong, right would be 0x25e9; 0x4b78, right");   // time to live
    EXPECT_EQ(sums(With(kSyn, 35, "f1")), "0x26e9, right; 0x4b78, wrong, right would be 0x4b77");  // window
    // An address is part of both.
    EXPECT_EQ(sums(With(kSyn, 15, "0b")),
              "0x26e9, wrong, right would be 0x26e8; 0x4b78, wrong, right would be 0x4b77");
}

// Cut at any place, what is left says the same or says that it is missing; nothing is made up.
TEST(PacketTextTest, SaysOfACutPacketOnlyWhatWasCaptured) {
    std::multiset<std::string> all;
    for (std::string text = kSynText; !text.empty(); text.erase(0, text.find('\n') + 1)) {
        all.insert(text.substr(0, text.find('\n')));
    }
    const std::vector<std::byte> bytes = test::FromHex(kSyn);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        // Of its own memory, so that the sanitizer sees a step over the end.
        const std::vector<std::byte> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        std::multiset<std::string> known = all;
        std::size_t missing = 0;
        for (const DetailsGroup& group : DescribePacketBytes(cut, 6, kEnglish)) {
            for (const DetailsLine& line : group.lines) {
                const std::string text = line.label + " " + line.value;
                const bool isAsInAll = known.contains(text);
                if (isAsInAll) known.erase(known.find(text));
                // Without the flags it is not known whether a number counts.
                const bool saysWhy = line.value.find("missing") != std::string::npos ||
                                     line.value == "60, more than was captured" ||
                                     (size < 34 && text == "Acknowledgement number: 0");
                EXPECT_TRUE(isAsInAll || saysWhy) << size << ": " << text;
                if (line.value == "missing (not captured)") ++missing;
            }
        }
        EXPECT_GT(missing, 0U) << size;
    }
    EXPECT_EQ(Describe(""), "IPv4 header\nmissing (not captured)\n");
    const std::string withoutLast = Describe(With(kSyn, 0, "45").substr(0, std::size_t{2} * 59));
    EXPECT_EQ(Line(withoutLast.substr(withoutLast.find("TCP header")), "Checksum:"),
              "0x4b78, cannot be checked, bytes are missing");
}

TEST(PacketTextTest, BelievesNoLengthOfAHeader) {
    struct Row {
        std::size_t byte;
        const char* instead;
        const char* part;  // the lines from here on are looked at
        const char* label;
        const char* expected;
    };
    const Row rows[] = {
        {0, "44", "IPv4", "Header length (bytes):", "16, less than the shortest header"},
        {0, "44", "IPv4", "Checksum:", "0x26e9, cannot be checked, a length is wrong"},
        {0, "65", "IPv4", "Version:", "6, wrong"},
        {2, "0013", "IPv4", "Total length (bytes):", "19, less than the header"},
        {2, "0013", "TCP", "Checksum:", "0x4b78, cannot be checked, a length is wrong"},
        {2, "003d", "IPv4", "Total length (bytes):", "61, more than was captured"},
        {2, "003b", "IPv4", "Behind the packet (bytes):", "1"},
        {2, "003b", "TCP", "Header length (bytes):", "40, more than the packet has"},
        {32, "40", "TCP", "Header length (bytes):", "16, less than the shortest header"},
        {32, "b0", "TCP", "Header length (bytes):", "44, more than the packet has"},
        {32, "b0", "TCP", "Option:", "(no line)"},
        {32, "90", "TCP", "Data (bytes):", "4"},
        {41, "00", "TCP", "Option:", "2, its length is wrong"},
        {41, "01", "TCP", "Option:", "2, its length is wrong"},
        {41, "15", "TCP", "Option:", "2, its length is wrong"},  // one more than there is
        {41, "03", "TCP", "Option:", "2, its length is wrong"},  // not the one of its kind
        {40, "fd", "TCP", "Option:", "253 (unknown): 05 b4"},
        {40, "00", "TCP", "Option:", "End of options"},
    };
    for (const Row& row : rows) {
        const std::string text = Describe(With(kSyn, row.byte, row.instead));
        const std::size_t part = text.find(std::string(row.part) + " header");
        ASSERT_NE(part, std::string::npos) << row.byte;
        EXPECT_EQ(Line(text.substr(part), row.label), row.expected) << row.byte << " " << row.instead;
    }
    // Nothing is read behind a header that cannot be.
    for (const char* first : {"44", "65"}) {
        const std::string text = Describe(With(kSyn, 0, first));
        EXPECT_EQ(text.find("TCP header"), std::string::npos) << first;
        EXPECT_TRUE(text.ends_with("What follows cannot be read.\n")) << first;
    }
}

TEST(PacketTextTest, NamesFlagsAndWhatTheyDo) {
    const std::pair<const char*, const char*> rows[] = {
        {"a012", "0x012 (SYN, ACK); agrees to open the connection"},
        {"a014", "0x014 (RST, ACK); breaks the connection off"},
        {"a011", "0x011 (FIN, ACK); ends its side of the connection"},
        {"a038", "0x038 (PSH, ACK, URG); (no line)"},
        {"a1c0", "0x1c0 (ECE, CWR, AE); (no line)"},
        {"a000", "0x000 (none); (no line)"},
    };
    for (const auto& [word, expected] : rows) {
        const std::string text = Describe(With(kSyn, 32, word));
        const std::string tcp = text.substr(text.find("TCP header"));
        EXPECT_EQ(Line(tcp, "Flags:") + "; " + Line(tcp, "Meaning:"), expected);
    }
}

TEST(PacketTextTest, ReadsOnlyTheFirstFragmentsHeader) {
    const std::string first = Describe(With(kSyn, 6, "2000"));
    EXPECT_EQ(Line(first, "Flags:"), "1 (more fragments follow)");
    EXPECT_EQ(Line(first, "Source port:"), "49152");
    EXPECT_EQ(Line(first.substr(first.find("TCP header")), "Checksum:"),
              "0x4b78, cannot be checked, this is a fragment");
    const std::string later = Describe(With(kSyn, 6, "00b9"));
    EXPECT_EQ(Line(later, "Fragment offset (bytes):"), "1480");
    EXPECT_EQ(later.find("TCP header"), std::string::npos);
    EXPECT_NE(later.find("This is a later fragment."), std::string::npos);
}

// To 8.8.8.8:53, with three bytes of data.
constexpr std::string_view kUdp =
    "45 00 00 1f 00 02 00 00 40 11 a9 0a c0 a8 01 0a 08 08 08 08"
    "d4 31 00 35 00 0b d5 6c 41 42 43";

TEST(PacketTextTest, ChecksUdpOverAnOddNumberOfBytes) {
    const auto udp = [](const std::string& hex, const char* label) {
        const std::string text = Describe(hex);
        return Line(text.substr(text.find("UDP header")), label);
    };
    const std::string whole = With(kUdp, 0, "45");
    EXPECT_EQ(udp(whole, "Checksum:"), "0xd56c, right");
    EXPECT_EQ(udp(whole, "Destination port:"), "53 (DNS - Domain name resolution)");
    EXPECT_EQ(udp(whole, "Data (bytes):"), "3");
    EXPECT_EQ(udp(With(kUdp, 30, "42"), "Checksum:"), "0xd56c, wrong, right would be 0xd66c");
    EXPECT_EQ(udp(With(kUdp, 26, "0000"), "Checksum:"), "0x0000, not used");
    EXPECT_EQ(udp(With(kUdp, 24, "0007"), "Length (bytes):"), "7, less than the shortest header");
    EXPECT_EQ(udp(With(kUdp, 24, "000c"), "Length (bytes):"), "12, more than the packet has");
    EXPECT_EQ(udp(With(kUdp, 24, "000c"), "Checksum:"), "0xd56c, cannot be checked, a length is wrong");
    // What stands behind the packet is no part of it.
    EXPECT_EQ(udp(whole + "ffff", "Checksum:"), "0xd56c, right");
    EXPECT_EQ(Line(Describe(whole + "ffff"), "Behind the packet (bytes):"), "2");
    // The right sum is zero, which is sent as its other form: data of 0x4142 and what fills it up.
    EXPECT_EQ(udp(With(With(kUdp, 26, "1234"), 28, "16af43"), "Checksum:"), "0x1234, wrong, right would be 0xffff");
}

TEST(PacketTextTest, ShowsWhatAnIcmpMessageQuotes) {
    // The router says that the host's port is closed, and quotes the header and eight bytes.
    const std::string text = Describe(
        "45 00 00 38 00 03 00 00 ff 01 38 66 c0 a8 01 01 c0 a8 01 0a"
        "03 03 16 57 00 00 00 00"
        "45 00 00 1f 00 02 00 00 40 11 a9 0a c0 a8 01 0a 08 08 08 08 d4 31 00 35 00 0b 12 34");
    const std::string icmp = text.substr(text.find("ICMP header"));
    EXPECT_TRUE(
        icmp.starts_with("ICMP header\n"
                         "Type: 3 (destination unreachable)\n"
                         "Code: 3 (port unreachable)\n"
                         "Checksum: 0x1657, right\n"
                         "\n"
                         "Quoted packet: IPv4 header\n"))
        << icmp;
    EXPECT_TRUE(
        icmp.ends_with("Destination address: 8.8.8.8\n"
                       "\n"
                       "Quoted packet: UDP header\n"
                       "Source port: 54321\n"
                       "Destination port: 53 (DNS - Domain name resolution)\n"
                       "Length (bytes): 11\n"
                       "Checksum: 0x1234, cannot be checked, bytes are missing\n"
                       "Data (bytes): 3\n"))
        << icmp;
    // What was not quoted is not missing from the capture.
    EXPECT_EQ(icmp.find("not captured"), std::string::npos);
    // One byte of the quoted header behind it is no field.
    EXPECT_EQ(Describe("45 00 00 31 00 03 00 00 ff 01 00 00 c0 a8 01 01 c0 a8 01 0a 03 03 00 00 00 00 00 00"
                       "45 00 00 1f 00 02 00 00 40 11 a9 0a c0 a8 01 0a 08 08 08 08 d4")
                  .find("UDP header"),
              std::string::npos);
    // Messages that quote one another are not followed.
    std::string nested;
    for (int depth = 0; depth < 40; ++depth) {
        nested += "45 00 ff ff 00 00 00 00 40 01 00 00 00 00 00 00 00 00 00 00 0b 00 00 00 00 00 00 00";
    }
    EXPECT_EQ(DescribePacketBytes(test::FromHex(nested), 1, kEnglish).size(), 4U);
}

constexpr std::string_view kArp =
    "00 01 08 00 06 04 00 01 00 1b ac 3d 4e ff c0 a8 01 0a 00 00 00 00 00 00 c0 a8 01 01";

TEST(PacketTextTest, DescribesArp) {
    const std::string text = Describe(kArp, kLogProtocolArp);
    EXPECT_EQ(text,
              "ARP packet\n"
              "Hardware type: 1 (Ethernet)\n"
              "Protocol type: 0x0800 (IPv4)\n"
              "Length of hardware addresses (bytes): 6\n"
              "Length of protocol addresses (bytes): 4\n"
              "Operation: 1 (request)\n"
              "Sender MAC: 00-1b-ac-3d-4e-ff\n"
              "Sender IP: 192.168.1.10\n"
              "Target MAC: 00-00-00-00-00-00\n"
              "Target IP: 192.168.1.1\n");
    const std::string lying = Describe(With(kArp, 4, "ff"), kLogProtocolArp);
    for (const char* label : {"Sender MAC:", "Sender IP:", "Target MAC:", "Target IP:"}) {
        EXPECT_EQ(Line(lying, label), "missing (not captured)") << label;
    }
    EXPECT_EQ(Line(Describe(With(kArp, 7, "02"), kLogProtocolArp), "Operation:"), "2 (reply)");
}

TEST(PacketTextTest, KnowsAnEthernetHeaderFromAPacketThatOnlyLooksLikeOne) {
    const auto headings = [](const std::string& hex, std::uint32_t protocol) {
        std::string names;
        for (const DetailsGroup& group : DescribePacketBytes(test::FromHex(hex), protocol, kEnglish)) {
            names += group.heading.substr(0, group.heading.find(' ')) + " ";
        }
        return names;
    };
    const std::string syn(kSyn);
    const std::string arp(kArp);
    EXPECT_EQ(headings("00 11 22 33 44 55 66 77 88 99 aa bb 08 00" + syn, 6), "Ethernet IPv4 TCP ");
    EXPECT_EQ(headings("ff ff ff ff ff ff 00 1b ac 3d 4e ff 08 06" + arp, kLogProtocolArp), "Ethernet ARP ");
    EXPECT_EQ(headings("ff ff ff ff ff ff 00 1b ac 3d 4e ff 08 06" + arp, 0), "Ethernet ARP ");
    // A hardware address that begins like an IPv4 header.
    EXPECT_EQ(headings("46 11 22 33 44 55 66 77 88 99 aa bb 08 00" + syn, 6), "Ethernet IPv4 TCP ");
    // A source address of 8.0.69.1 looks like a type and a header.
    EXPECT_EQ(headings("45 00 00 14 00 03 00 00 40 02 6c 32 08 00 45 01 c0 a8 01 0a", 2), "IPv4 ");
    // The same in an ARP packet whose sender's hardware address ends in 08 06.
    EXPECT_EQ(headings(With(kArp, 12, "0806"), kLogProtocolArp), "ARP ");
    EXPECT_EQ(headings("00 11 22 33 44 55 66 77 88 99 aa bb 86 dd 60 00", 6), "IPv4 ");  // and says what is wrong
    EXPECT_EQ(headings("00 11 22 33 44 55 66 77 88 99 aa bb 08", 6), "IPv4 ");
}

TEST(PacketTextTest, ShowsTheBytesInRowsOfSixteen) {
    EXPECT_TRUE(DumpLines({}).empty());
    const std::vector<std::string> lines =
        DumpLines(test::FromHex("45 00 1f 20 7e 7f ff 41 00 00 00 00 00 00 00 00 61"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], "0000  45 00 1f 20 7e 7f ff 41 00 00 00 00 00 00 00 00  |E.. ~..A........|");
    EXPECT_EQ(lines[1], "0010  61                                               |a|");
    EXPECT_EQ(DumpLines(std::vector<std::byte>(0x10001)).back().substr(0, 9), "10000  00");
}

}  // namespace
}  // namespace brennvar
