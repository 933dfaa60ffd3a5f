#include "base/VersionInfo_win.h"

#include <gtest/gtest.h>

#include "base/LocalPath_win.h"
#include "base/Windows_win.h"
#include "support/TempFolder.h"

namespace brennvar {

TEST(VersionInfoWinTest, ReadsTheDescriptionOfAProgramThatHasOne) {
    char own[MAX_PATH] = {};  // linked with the program's resources
    ::GetModuleFileNameA(nullptr, own, MAX_PATH);
    EXPECT_EQ(ReadFileDescription(own), "Brennvar Personal Firewall");
    const ProgramVersion version = ReadProgramVersion(own);
    EXPECT_EQ(version.company, "Quorlan");
    EXPECT_EQ(version.version, ReadOwnVersion() + ".0");
    const test::TempFolder folder;
    EXPECT_FALSE(FindProgramVersion(folder.File("absent.exe")));
    EXPECT_FALSE(FindProgramVersion(R"(\\host.invalid\share\a.exe)"));
    const auto nothing = FindProgramVersion(folder.Write("text.exe", "MZ, and no program"));
    EXPECT_TRUE(nothing && nothing->description.empty() && nothing->company.empty());
}

TEST(LocalPathTest, KnowsPathsToOtherMachines) {
    for (const char* path : {R"(\\host\share\a.exe)", "//host/a", R"(\/host\a.exe)"}) {
        EXPECT_FALSE(IsOnThisMachine(path)) << path;
    }
    for (const char* path : {R"(C:\a.exe)", "a.exe", R"(\a.exe)", ""}) EXPECT_TRUE(IsOnThisMachine(path)) << path;
}

}  // namespace brennvar
