#include "logs/Lookups.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <new>

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
    const StopSignal stop;
    LogLookups lookups(folder.Path(), stop);
    const std::string before = DnsRecord("\xC0\xA8\x01\x0A", "old.example");
    // Several scanned pieces, with a match in the first and in the last.
    std::string log = before;
    while (log.size() < 2 * kScanSize) log += DnsRecord("\x0A\x01\xA8\xC0", "reversed.example");
    log += before + DnsRecord("\xC0\xA8\x01\x0A", "new.example") +
           DnsRecord("\x01\x02\x03\x04", std::string(256, 'n')) + before.substr(0, 259);
    folder.Write(R"(\Log\20260309_dns.log)", log);
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "new.example");
    EXPECT_EQ(lookups.HostName(kDay, 0x04030201), std::string(255, 'n'));  // unterminated
    EXPECT_EQ(lookups.HostName(kDay, kOther), "");
    EXPECT_EQ(lookups.HostName({.year = 2026, .month = 3, .day = 10}, kAddress), "");
    EXPECT_EQ(LogFilePath("D", LogKind::Packet, kDay), R"(D\Log\20260309_packet.log)");
    EXPECT_EQ(LogFilePath("D", LogKind::Traffic, {.year = 7, .month = 12, .day = 1}), R"(D\Log\00071201.log)");
}

TEST(LookupsTest, FormatsTheHardwareAddress) {
    using namespace std::string_literals;
    const test::DataFolder folder;
    const StopSignal stop;
    LogLookups lookups(folder.Path(), stop);
    const std::string wanted = "\0\x1B\xAC\x3D\x4E\xFF\0\0\xC0\xA8\x01\x0A"s;
    folder.Write(R"(\Log\20260309_mac.log)", "\xC0\xA8\x01\x0A\0\0\0\0\x01\x02\x03\x04"s + wanted + '\xFF' +
                                                 wanted.substr(1) + wanted.substr(0, 11));
    EXPECT_EQ(lookups.HardwareAddress(kDay, kAddress), "00-1b-ac-3d-4e-ff");
    EXPECT_EQ(lookups.HardwareAddress(kDay, kOther), "");
}

TEST(LookupsTest, TakesTheFirstAdviceForAPath) {
    const auto entry = [](std::string path, std::string_view advice) {
        path.resize(400, '\0');
        return path + std::string(advice);
    };
    using namespace std::string_view_literals;
    const test::DataFolder folder;
    const StopSignal stop;
    LogLookups lookups(folder.Path(), stop);
    EXPECT_EQ(lookups.Advice("x"), std::nullopt);
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
    for (const auto& [path, advice] : rows) EXPECT_EQ(lookups.Advice(path), advice) << path;
}

TEST(LookupsTest, FollowsFilesThatGrowShrinkAreReplacedAndGoAway) {
    const test::DataFolder folder;
    const StopSignal stop;
    LogLookups lookups(folder.Path(), stop);
    const auto write = [&](std::string_view log) { folder.Write(R"(\Log\20260309_dns.log)", log); };
    const std::string one = DnsRecord("\xC0\xA8\x01\x0A", "one.example");
    const std::string two = DnsRecord("\xC0\xA8\x01\x0A", "two.example");
    const std::string other = DnsRecord("\xC0\xA8\x01\x0B", "other.example");
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "");
    write(one + two.substr(0, 100));
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "one.example");
    write(one + two + other);  // the cut record has been completed
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "two.example");
    EXPECT_EQ(lookups.HostName(kDay, kOther), "other.example");
    write(one);
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "one.example");
    EXPECT_EQ(lookups.HostName(kDay, kOther), "");
    write(two);  // as long as before
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "two.example");
    write(other + two + one);  // longer, and yet another file
    EXPECT_EQ(lookups.HostName(kDay, kOther), "other.example");
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "one.example");
    std::filesystem::remove(folder.File(R"(\Log\20260309_dns.log)"));
    EXPECT_EQ(lookups.HostName(kDay, kAddress), "");
    // Days that are asked about in turn do not answer for one another.
    write(one);
    folder.Write(R"(\Log\20260308_dns.log)", two);
    folder.Write(R"(\Log\20260307_dns.log)", other);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(lookups.HostName(kDay, kAddress), "one.example");
        EXPECT_EQ(lookups.HostName({.year = 2026, .month = 3, .day = 8}, kAddress), "two.example");
        EXPECT_EQ(lookups.HostName({.year = 2026, .month = 3, .day = 7}, kAddress), "");
    }
}

TEST(LookupsTest, LooksAtTheEndOfALargeFileAndStopsWhenToldTo) {
    const test::DataFolder folder;
    StopSignal stop;
    const std::string one = DnsRecord("\xC0\xA8\x01\x0A", "one.example");
    const std::string other = DnsRecord("\xC0\xA8\x01\x0B", "other.example");
    const std::string path = folder.Write(R"(\Log\20260309_dns.log)", one + other + other);
    RecordIndex<HostNameTraits> whole(path, stop, 3 * sizeof(DnsLogRecord));
    RecordIndex<HostNameTraits> end(path, stop, 3 * sizeof(DnsLogRecord) - 1);
    EXPECT_TRUE(whole.Find(kAddress));
    EXPECT_FALSE(end.Find(kAddress));
    EXPECT_TRUE(end.Find(kOther));
    // Grown by more than is looked at: what was read before is still known.
    folder.Write(R"(\Log\20260309_dns.log)", one + other + other + one + one + one + one);
    EXPECT_TRUE(end.Find(kAddress));
    EXPECT_TRUE(end.Find(kOther));
    stop.Request();
    RecordIndex<HostNameTraits> late(path, stop);
    EXPECT_FALSE(late.Find(kAddress));
}

// Counts the records that are looked at.
template <class Traits>
struct Counting : Traits {
    using typename Traits::Key;
    using typename Traits::Record;
    static inline int seen = 0;
    static inline bool isWithoutMemory = false;
    static std::uint64_t HashOf(const Record& record) {
        if (isWithoutMemory) throw std::bad_alloc();
        ++seen;
        return Traits::HashOf(record);
    }
    static std::uint64_t HashOf(Key key) { return Traits::HashOf(key); }
};

TEST(LookupsTest, ReadsFromTheSideThatCountsAndNoFurtherThanTheFirstMatch) {
    const test::DataFolder folder;
    const StopSignal stop;
    constexpr int kOld = 2 * kScanSize / sizeof(DnsLogRecord) + 5;  // into a third piece
    const auto addressOf = [](int number) {
        std::string address(4, '\1');
        std::memcpy(address.data(), &number, sizeof number);
        return address;
    };
    std::string log;
    for (int i = 1; i <= kOld; ++i) log += DnsRecord(addressOf(i), "old.example");
    const std::string newest = DnsRecord("\xC0\xA8\x01\x0A", "new.example");
    const std::string path = folder.Write(R"(\Log\20260309_dns.log)", log + newest + newest);
    using Names = Counting<HostNameTraits>;
    RecordIndex<Names> names(path, stop);
    struct Row {
        Ipv4 address;
        bool isFound;
        int seen;  // of all records, so far
    };
    const Row rows[] = {{kAddress, true, 1},                             // the last record
                        {kOld - 2, true, 5},                             // going on from there
                        {kAddress, true, 5},                             // remembered
                        {kOld, true, 5},           {1, true, kOld + 2},  // the first record
                        {kOther, false, kOld + 2},                       // nothing is left to be read
                        {kOther, false, kOld + 2}};
    for (const Row& row : rows) {
        EXPECT_EQ(names.Find(row.address).has_value(), row.isFound) << row.address;
        EXPECT_EQ(Names::seen, row.seen) << row.address;
    }
    const std::string grown = DnsRecord(addressOf(2), "grown.example");
    folder.Write(R"(\Log\20260309_dns.log)", log + newest + newest + grown);
    Names::isWithoutMemory = true;
    EXPECT_THROW((void)names.Find(2), std::bad_alloc);
    Names::isWithoutMemory = false;
    EXPECT_STREQ(names.Find(2)->name, "grown.example") << "what was appended is still to be read";
    EXPECT_EQ(Names::seen, kOld + 2 + 2) << "what was appended, to forget what stood for it and to note it";

    using Advices = Counting<AdviceTraits>;
    std::string advice(2 * sizeof(AdviceRecord), '\0');
    advice.replace(0, 1, "a");
    advice.replace(sizeof(AdviceRecord), 1, "b");
    RecordIndex<Advices> advices(folder.Write(R"(\advice.dat)", advice), stop);
    EXPECT_TRUE(advices.Find("A"));
    EXPECT_EQ(Advices::seen, 1);
    EXPECT_TRUE(advices.Find("b"));
    EXPECT_EQ(Advices::seen, 2);
}

TEST(LookupsTest, FindsWhatItHasNoRoomToRemember) {
    using namespace std::string_literals;
    const test::DataFolder folder;
    const StopSignal stop;
    LogLookups lookups(folder.Path(), stop);
    constexpr std::uint32_t kKnown = RecordIndex<HardwareAddressTraits>::kMostKeys;
    std::string log;
    const auto add = [&](std::uint32_t number, char hardware) {
        log += "\0\0\0\0\0"s + hardware + "\0\0"s;
        log.append(reinterpret_cast<const char*>(&number), sizeof number);
    };
    for (std::uint32_t i = 0; i < kKnown; ++i) add(i, 'a');
    add(0, 'b');
    add(kKnown, 'c');
    add(kKnown, 'd');
    folder.Write(R"(\Log\20260309_mac.log)", log);
    EXPECT_EQ(lookups.HardwareAddress(kDay, 0), "00-00-00-00-00-61");  // the first one
    EXPECT_EQ(lookups.HardwareAddress(kDay, kKnown), "00-00-00-00-00-63");
    EXPECT_EQ(lookups.HardwareAddress(kDay, kKnown + 1), "");
}

}  // namespace
}  // namespace brennvar
