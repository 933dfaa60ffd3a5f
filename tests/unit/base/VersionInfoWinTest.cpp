#include "base/VersionInfo_win.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <vector>

#include "base/Windows_win.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

std::string SystemFile(const std::string& name) {
    std::array<char, MAX_PATH> folder{};
    ::GetSystemDirectoryA(folder.data(), MAX_PATH);
    return std::string(folder.data()) + "\\" + name;
}

// The description as the system's own query finds it.
std::string QueriedDescription(const std::string& path) {
    DWORD ignored = 0;
    std::vector<char> block(::GetFileVersionInfoSizeA(path.c_str(), &ignored));
    if (block.empty() || !::GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data())) {
        return {};
    }
    WORD* pair = nullptr;
    UINT size = 0;
    if (!::VerQueryValueA(block.data(), "\\VarFileInfo\\Translation", reinterpret_cast<void**>(&pair), &size))
        return {};
    std::array<char, 64> query{};
    std::snprintf(query.data(), query.size(), "\\StringFileInfo\\%04x%04x\\FileDescription", pair[0], pair[1]);
    char* text = nullptr;
    if (!::VerQueryValueA(block.data(), query.data(), reinterpret_cast<void**>(&text), &size)) return {};
    return text;
}

TEST(VersionInfoWinTest, AgreesWithTheSystemsOwnQuery) {
    for (const char* name : {"kernel32.dll", "user32.dll", "shell32.dll"}) {
        const std::string path = SystemFile(name);
        const std::string expected = QueriedDescription(path);
        EXPECT_FALSE(expected.empty()) << name;
        EXPECT_EQ(ReadFileDescription(path), expected) << name;
    }
}

TEST(VersionInfoWinTest, IsEmptyForFilesWithoutADescription) {
    const test::TempFolder folder;
    EXPECT_EQ(ReadFileDescription(folder.File("absent.exe")), "");
    EXPECT_EQ(ReadFileDescription(folder.Write("text.exe", "MZ, and no program")), "");
    EXPECT_EQ(ReadFileDescription(""), "");
}

}  // namespace
}  // namespace brennvar
