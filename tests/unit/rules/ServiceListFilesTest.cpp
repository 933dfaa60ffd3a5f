// The lists of the service as they are read whole.
#include <gtest/gtest.h>

#include <filesystem>

#include "rules/ListFile.h"
#include "rules/SiteList.h"
#include "rules/TrustedPrograms.h"
#include "support/FakeClock.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

using namespace std::string_literals;
using Sites = std::vector<Site>;

// Pads with zeros.
std::string Field(std::string text, std::size_t size) {
    text.resize(size, '\0');
    return text;
}

class ServiceListFilesTest : public testing::Test {
protected:
    test::TempFolder folder;
    test::FakeClock clock;

    std::optional<Sites> SitesOf(const std::string& plain) {
        return LoadSites(folder.Write("domain.conf", test::EncipherByHand(plain, 108)), clock);
    }
};

TEST_F(ServiceListFilesTest, ReadsSitesWhateverTheFileHolds) {
    const std::string one = "\x01\x02\x03\x04"s + Field("one.example", 104);
    struct Row {
        std::string plain;
        Sites expected;
    };
    const Row rows[] = {
        {"", {}},
        {one, {{0x04030201, "one.example"}}},
        {one + one.substr(0, 107), {{0x04030201, "one.example"}}},
        {"\0\0\0\0"s + Field("zero", 104) + one + one,
         {{0, "zero"}, {0x04030201, "one.example"}, {0x04030201, "one.example"}}},
        {"\1\0\0\0"s + Field("", 104) + "\2\0\0\0"s + std::string(104, 'x'), {{2, std::string(103, 'x')}}},
    };
    for (const Row& row : rows) EXPECT_EQ(SitesOf(row.plain), row.expected) << row.plain.size();
}

TEST_F(ServiceListFilesTest, ReadsProgramsFromTheFieldThatCounts) {
    const std::string plain = Field(R"(C:\long.exe)", 260) + Field("", 34) + Field("", 294) +
                              Field(R"(C:\hidden.exe)", 260) + Field(R"(C:\short.exe)", 34) +
                              std::string(260, 'p') + Field("", 34) + std::string(294, 's');
    const std::string file = folder.Write("trusted.conf", test::EncipherByHand(plain + "cut", 294));
    EXPECT_EQ(LoadTrustedPrograms(file, clock),
              (std::vector<std::string>{R"(C:\long.exe)", R"(C:\short.exe)", std::string(259, 'p'),
                                        std::string(33, 's')}));
}

TEST_F(ServiceListFilesTest, AMissingFileIsAnEmptyListAndOneThatCannotBeReadIsNone) {
    EXPECT_EQ(LoadSites(folder.File("none.conf"), clock), Sites());
    EXPECT_FALSE(std::filesystem::exists(folder.File("none.conf")));
    std::filesystem::create_directory(folder.File("folder"));
    const auto before = clock.elapsed;
    EXPECT_EQ(LoadSites(folder.File("folder"), clock), std::nullopt);
    EXPECT_EQ(clock.elapsed - before, std::chrono::milliseconds(500));
}

TEST_F(ServiceListFilesTest, ReadsNoMoreThanItsLimit) {
    std::string plain;
    const std::string one = "\1\0\0\0"s + Field("x", 104);
    for (std::size_t i = 0; i <= kMostListEntries; ++i) plain += one;
    EXPECT_EQ(SitesOf(plain)->size(), 100'000U);
}

}  // namespace
}  // namespace brennvar
