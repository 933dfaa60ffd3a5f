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

TEST_F(ServiceListFilesTest, TakesTheWholePathOfAProgramFromTheFieldThatCounts) {
    const auto trusted = [](const std::string& longPath, const std::string& shortPath) {
        return Field(longPath, 260) + Field(shortPath, 34);
    };
    const std::string full(259, 'p');
    const std::string plain = trusted(R"(C:\a rather long folder\program.exe)", "") + trusted("", "") +
                              trusted(R"(C:\hidden.exe)", R"(C:\b.exe)") + trusted(full + 'x', "") +
                              trusted("", std::string(34, 's')) + trusted("", R"(C:\cut.exe)").substr(0, 293);
    const std::string file = folder.Write("trusted.conf", test::EncipherByHand(plain, 294));
    EXPECT_EQ(LoadTrustedPrograms(file, clock),
              (std::vector<std::string>{R"(C:\a rather long folder\program.exe)", R"(C:\b.exe)", full,
                                        std::string(33, 's')}));
    for (const std::string& path : {std::string(R"(C:\A rather long folder\PROGRAM.exe)"),
                                    std::string(R"(c:\B.EXE)"), full, std::string(33, 'S')}) {
        EXPECT_TRUE(IsTrustedProgram(file, path)) << path;
    }
    for (const std::string& path :
         {std::string(), std::string(R"(C:\b.ex)"), std::string(R"(C:\b.exe2)"), std::string("b.exe"),
          std::string(R"(C:\hidden.exe)"), full + 'x', std::string(34, 's'), std::string(R"(C:\cut.exe)")}) {
        EXPECT_FALSE(IsTrustedProgram(file, path)) << path;
    }
    EXPECT_FALSE(IsTrustedProgram(folder.File("none.conf"), R"(C:\b.exe)"));
    EXPECT_FALSE(std::filesystem::exists(folder.File("none.conf")));
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
