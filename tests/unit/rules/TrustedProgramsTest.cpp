#include "rules/TrustedPrograms.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/GoldenCipher.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

// The text at 0 and the one at 260, in 294 bytes.
std::string Trusted(std::string longPath, std::string shortPath) {
    longPath.resize(260, '\0');
    shortPath.resize(34, '\0');
    return longPath + shortPath;
}

TEST(TrustedProgramsTest, ComparesTheWholePathOfTheFieldThatCounts) {
    const test::TempFolder folder;
    const std::string full(259, 'p');
    const std::string plain =
        Trusted("", R"(C:\Tools\a.exe)") + Trusted(R"(C:\a rather long folder\program.exe)", "") +
        Trusted(R"(C:\hidden.exe)", R"(C:\b.exe)") + Trusted(full + 'x', "") + Trusted("", std::string(34, 's')) +
        Trusted("", "") + Trusted("", R"(C:\cut.exe)").substr(0, 293);
    const std::string file = folder.Write("trusted.conf", test::EncipherByHand(plain, 294));
    for (const std::string& path :
         {std::string(R"(c:\TOOLS\A.EXE)"), std::string(R"(C:\A rather long folder\PROGRAM.exe)"),
          std::string(R"(C:\b.exe)"), full, std::string(33, 'S')}) {
        EXPECT_TRUE(IsTrustedProgram(file, path)) << path;
    }
    for (const std::string& path :
         {std::string(), std::string(R"(C:\Tools\a.ex)"), std::string(R"(C:\Tools\a.exe2)"),
          std::string(R"(Tools\a.exe)"), std::string(R"(C:\hidden.exe)"), full + 'x', std::string(34, 's'),
          std::string(R"(C:\cut.exe)")}) {
        EXPECT_FALSE(IsTrustedProgram(file, path)) << path;
    }
}

TEST(TrustedProgramsTest, FindsTheLastOfManyAndMakesNoFile) {
    const test::TempFolder folder;
    std::string plain;
    for (int i = 0; i < 3000; ++i) plain += Trusted("", "C:\\" + std::to_string(i) + ".exe");
    const std::string file = folder.Write("trusted.conf", test::EncipherByHand(plain, 294));
    EXPECT_TRUE(IsTrustedProgram(file, R"(C:\2999.exe)"));
    EXPECT_FALSE(IsTrustedProgram(file, R"(C:\3000.exe)"));
    EXPECT_FALSE(IsTrustedProgram(folder.File("none.conf"), R"(C:\0.exe)"));
    EXPECT_FALSE(std::filesystem::exists(folder.File("none.conf")));
}

}  // namespace
}  // namespace brennvar
