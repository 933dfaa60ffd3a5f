#include "logs/Lookups.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ipc/RecordFile.h"
#include "logs/LogFiles.h"
#include "support/DataFolder.h"
#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

constexpr LocalDate kDay{.year = 2026, .month = 3, .day = 9};
constexpr Ipv4 kAddress = 0x0A01A8C0;  // 192.168.1.10
constexpr Ipv4 kOther = 0x0B01A8C0;

TEST(LogFilesTest, NamesAFilePerKindAndDay) {
    EXPECT_EQ(LogFilePath("D", LogKind::Traffic, kDay), R"(D\Log\20260309.log)");
    EXPECT_EQ(LogFilePath("D", LogKind::Packet, kDay), R"(D\Log\20260309_packet.log)");
    EXPECT_EQ(LogFilePath("D", LogKind::Dns, {.year = 2026, .month = 12, .day = 31}), R"(D\Log\20261231_dns.log)");
    EXPECT_EQ(LogFilePath("D", LogKind::Mac, {.year = 7, .month = 1, .day = 1}), R"(D\Log\00070101_mac.log)");
}

// Address bytes, then the name in a field of 256.
std::string DnsRecord(std::string_view address, std::string name) {
    name.resize(256, '\0');
    return std::string(address) + name;
}

TEST(LookupsTest, TakesTheLatestHostNameOfAnAddress) {
    const test::DataFolder folder;
    const std::string before = DnsRecord("\xC0\xA8\x01\x0A", "old.example");
    // Several scanned pieces, with a match in the first and in the last.
    std::string log = before + DnsRecord("\xC0\xA8\x01\x0A", "middle.example");
    while (log.size() < 2 * kScanSize) log += DnsRecord("\x0A\x01\xA8\xC0", "reversed.example");
    log += before + DnsRecord("\xC0\xA8\x01\x0A", "new.example") +
           DnsRecord("\x01\x02\x03\x04", std::string(256, 'n'));
    const std::string cut = log + before.substr(0, 259);
    folder.Write(R"(\Log\20260309_dns.log)", cut);

    EXPECT_EQ(FindHostName(folder.Path(), kDay, kAddress), "new.example");
    EXPECT_EQ(FindHostName(folder.Path(), kDay, 0x04030201), std::string(255, 'n'));  // unterminated
    EXPECT_EQ(FindHostName(folder.Path(), kDay, kOther), "");
    EXPECT_EQ(FindHostName(folder.Path(), {.year = 2026, .month = 3, .day = 10}, kAddress), "");
}

TEST(LookupsTest, FormatsTheHardwareAddress) {
    const test::DataFolder folder;
    folder.Write(R"(\Log\20260309_mac.log)", std::string("\xC0\xA8\x01\x0A\0\0\0\0\x01\x02\x03\x04"
                                                         "\0\x1B\xAC\x3D\x4E\xFF\0\0\xC0\xA8\x01\x0A"
                                                         "\xFF\x1B\xAC\x3D\x4E\xFF\0\0\xC0\xA8\x01\x0A"
                                                         "\xFF\x1B\xAC\x3D\x4E\xFF\0\0\xC0\xA8\x01",
                                                         12 + 12 + 12 + 11));
    EXPECT_EQ(FindHardwareAddress(folder.Path(), kDay, kAddress), "00-1b-ac-3d-4e-ff");
    EXPECT_EQ(FindHardwareAddress(folder.Path(), kDay, kOther), "");
}

TEST(LookupsTest, TakesTheFirstAdviceForAPath) {
    const auto entry = [](std::string path, std::string_view advice) {
        path.resize(400, '\0');
        return path + std::string(advice);
    };
    using namespace std::string_view_literals;
    const test::DataFolder folder;
    folder.Write(R"(\advice.dat)", entry("", "\x01\0\0\0"sv) + entry(R"(C:\A.EXE)", "\x01\0\0\0"sv) +
                                       entry(R"(c:\a.exe)", "\0\0\0\0"sv) + entry(R"(c:\b.exe)", "\0\0\0\0"sv) +
                                       entry(R"(c:\c.exe)", "\x05\0\0\0"sv) + entry("c:\\d.exe", "\x01\0\0"sv));
    struct Row {
        std::string_view path;
        std::optional<std::uint32_t> expected;
    };
    const Row rows[] = {
        {R"(C:\a.exe)", 1},             // case does not count, the first does
        {R"(C:\b.exe)", 0},             // advised against is not the same as no advice
        {R"(c:\c.exe)", 5},             // kept as it stands
        {R"(c:\d.exe)", std::nullopt},  // cut off
        {R"(c:\a.ex)", std::nullopt},
        {"", std::nullopt},  // no program: not even with an empty entry there
    };
    for (const Row& row : rows) EXPECT_EQ(FindAdvice(folder.Path(), row.path), row.expected) << row.path;
}

TEST(LookupsTest, CreatesNothing) {
    const test::DataFolder folder;
    EXPECT_EQ(FindHostName(folder.Path(), kDay, kAddress), "");
    EXPECT_EQ(FindHardwareAddress(folder.Path(), kDay, kAddress), "");
    EXPECT_EQ(FindAdvice(folder.Path(), "x"), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace brennvar
