#include "config/Amounts.h"

#include <gtest/gtest.h>

#include "support/FakeIni.h"

namespace brennvar {
TEST(AmountsTest, WritesOneDecimalBelowAHundredNever1024AndGroupsLongNumbers) {
    const std::pair<std::uint64_t, std::string_view> sizes[] = {
        {1023, "1023 B"},          {1024, "1.0 KB"},
        {102'348, "99.9 KB"},      {102'349, "100 KB"},            // 99.95
        {1'048'063, "1023 KB"},    {1'048'064, "1.0 MB"},          // 1023.5 KB
        {4'000'000'000, "3.7 GB"}, {1ULL << 54, "16\240384 TB"}};  // there is nothing above
    for (const auto& [bytes, expected] : sizes) EXPECT_EQ(FormatBytes(bytes), expected) << bytes;
    EXPECT_EQ(FormatCount(9'999), "9999");
    EXPECT_EQ(FormatCount(10'000), "10\240000");
    EXPECT_EQ(FormatCount(1'234'567), "1\240234\240567");
    EXPECT_EQ(FormatRate(5, 0), "0 B/s") << "two looks in the same millisecond";
    EXPECT_EQ(FormatRate(1536, 500), "3.0 KB/s");
    EXPECT_EQ(FormatRate(2047, 2000), "1.0 KB/s") << "1023.5 bytes a second";
    auto ini = std::make_unique<test::FakeIni>(
        test::FakeIni::Values{{"Language/DL_N_201_1650", "1,5"},
                              {"Language/DL_N_201_1651", "o ko"},  // the rest stays English
                              {"Language/DL_N_201_1652", "/sek"}});
    const AmountWords words{Language(std::move(ini))};
    EXPECT_EQ(FormatBytes(1536, words), "1,5 ko");
    EXPECT_EQ(FormatBytes(3 << 20, words), "3,0 MB");
    EXPECT_EQ(FormatRate(7, 1000, words), "7 o/sek");
}

}  // namespace brennvar
