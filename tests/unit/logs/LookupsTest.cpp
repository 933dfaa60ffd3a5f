#include "logs/Lookups.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ipc/RecordFile.h"
#include "logs/LogFiles.h"
#include "support/DataFolder.h"

namespace brennvar {
namespace {

constexpr LocalDate kDay{.year = 2026, .month = 3, .day = 9};
constexpr Ipv4 kAddress = 0x0A01A8C0;  // 192.168.1.10
constexpr Ipv4 kOther = 0x0B01A8C0;

// Address bytes, then the name in a field of 256.
std::string DnsRecord(std::string_view address, std::string name) {
    name.resize(256, '\0');
    return std::string(address) + name;
}

TEST(LookupsTest, TakesTheLatestHostNameOfAnAddress) {
    const test::DataFolder folder;
    const std::string before = DnsRecord("\xC0\xA8\x01\x0A", "old.example");
    // Several scanned pieces, with a match in the first and in the last.
    std::string log = before;
    while (log.size() < 2 * kScanSize) log += DnsRecord("\x0A\x01\xA8\xC0", "reversed.example");
    log += before + DnsRecord("\xC0\xA8\x01\x0A", "new.example") +
           DnsRecord("\x01\x02\x03\x04", std::string(256, 'n')) + before.substr(0, 259);
    folder.Write(R"(\Log\20260309_dns.log)", log);
    EXPECT_EQ(FindHostName(folder.Path(), kDay, kAddress), "new.example");
    EXPECT_EQ(FindHostName(folder.Path(), kDay, 0x04030201), std::string(255, 'n'));  // unterminated
    EXPECT_EQ(FindHostName(folder.Path(), kDay, kOther), "");
    EXPECT_EQ(FindHostName(folder.Path(), {.year = 2026, .month = 3, .day = 10}, kAddress), "");
    EXPECT_EQ(LogFilePath("D", LogKind::Packet, kDay), R"(D\Log\20260309_packet.log)");
    EXPECT_EQ(LogFilePath("D", LogKind::Traffic, {.year = 7, .month = 12, .day = 1}), R"(D\Log\00071201.log)");
}

TEST(LookupsTest, FormatsTheHardwareAddress) {
    using namespace std::string_literals;
    const test::DataFolder folder;
    const std::string wanted = "\0\x1B\xAC\x3D\x4E\xFF\0\0\xC0\xA8\x01\x0A"s;
    folder.Write(R"(\Log\20260309_mac.log)", "\xC0\xA8\x01\x0A\0\0\0\0\x01\x02\x03\x04"s + wanted + '\xFF' +
                                                 wanted.substr(1) + wanted.substr(0, 11));
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
    EXPECT_EQ(FindAdvice(folder.Path(), "x"), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));  // nothing is created
    folder.Write(R"(\advice.dat)", entry("", "\x01\0\0\0"sv) + entry(R"(C:\A.EXE)", "\x01\0\0\0"sv) +
                                       entry(R"(c:\a.exe)", "\0\0\0\0"sv) + entry(R"(c:\b.exe)", "\0\0\0\0"sv) +
                                       entry(R"(c:\c.exe)", "\x05\0\0\0"sv) + entry("c:\\d.exe", "\x01\0\0"sv));
    const std::pair<std::string_view, std::optional<std::uint32_t>> rows[] = {
        {R"(C:\a.exe)", 1},             // case does not count, the first does
        {R"(C:\b.exe)", 0},             // not the same as no advice
        {R"(c:\c.exe)", 5},             // kept as it stands
        {R"(c:\d.exe)", std::nullopt},  // cut off
        {R"(c:\a.ex)", std::nullopt},
        {"", std::nullopt}};
    for (const auto& [path, advice] : rows) EXPECT_EQ(FindAdvice(folder.Path(), path), advice) << path;
}

}  // namespace
}  // namespace brennvar
