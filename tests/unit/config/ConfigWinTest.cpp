#include <gtest/gtest.h>

#include "base/Windows_win.h"
#include "config/Folders_win.h"
#include "config/Ini_win.h"
#include "config/Language.h"
#include "config/RegKey_win.h"
#include "config/UserValues_win.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

TEST(IniWinTest, ReadsBackWhatItWrote) {
    const test::TempFolder folder;
    const CIni ini(folder.File("settings.ini"));
    EXPECT_EQ(ini.Read("Skin", "Directory", "Default"), "Default");  // no file yet
    EXPECT_TRUE(ini.Write("Skin", "Directory", "Dark Blue"));
    EXPECT_EQ(ini.Read("Skin", "Directory", "Default"), "Dark Blue");
    EXPECT_EQ(ini.Read("Language", "Directory", "English"), "English");
    EXPECT_FALSE(CIni(folder.File("no folder\\x.ini")).Write("Skin", "Directory", "x"));
}

TEST(IniWinTest, KeepsLongValuesHighCharactersAndTheFallbacksBlanks) {
    const test::TempFolder folder;
    const std::string longText(1000, 'x');
    const CIni ini(folder.Write("default.ini", "[Language]\r\nDL_N_201_1=" + longText +
                                                   "\r\nDL_N_201_2=Z\xFCr\xFC\x63k\r\nDL_N_201_3=\r\n"));
    EXPECT_EQ(ini.Read("Language", "DL_N_201_1", ""), longText);
    EXPECT_EQ(ini.Read("Language", "DL_N_201_2", ""), "Z\xFCr\xFC\x63k");
    EXPECT_EQ(ini.Read("Language", "DL_N_201_3", "x"), "");
    EXPECT_EQ(ini.Read("Language", "DL_N_201_4", " with blanks  "), " with blanks  ");
}

TEST(IniWinTest, ReadsValuesWhoseLengthIsNearTheBuffers) {
    const test::TempFolder folder;
    for (const std::size_t length : {254U, 255U, 256U, 257U, 511U, 512U}) {
        const std::string text(length, 'x');
        const CIni ini(folder.Write("default.ini", "[S]\r\nk=" + text + "\r\n"));
        EXPECT_EQ(ini.Read("S", "k", ""), text) << length;
    }
}

TEST(FoldersWinTest, FindsTheProgramsFolderAndTheCommonOne) {
    const std::string installation = GetInstallationFolder();
    EXPECT_EQ(installation.substr(1, 2), ":\\");
    EXPECT_NE(installation.back(), '\\');
    EXPECT_NE(::GetFileAttributesA((installation + "\\shell_tests.exe").c_str()), INVALID_FILE_ATTRIBUTES);

    char common[MAX_PATH] = {};
    ASSERT_NE(::GetEnvironmentVariableA("ProgramData", common, MAX_PATH), 0U);
    EXPECT_EQ(GetDataFolder(), std::string(common) + "\\Quorlan\\Brennvar Firewall");
}

class UserValuesWinTest : public testing::Test {
protected:
    // A key of the tests' own, absent at the start of each.
    static constexpr char kPath[] = R"(Software\Quorlan\Brennvar Tests\Values)";
    UserValuesWinTest() { ::RegDeleteKeyA(HKEY_CURRENT_USER, kPath); }
    ~UserValuesWinTest() override { ::RegDeleteKeyA(HKEY_CURRENT_USER, kPath); }

    WinUserValues m_values{kPath};
};

TEST_F(UserValuesWinTest, LeavesTheVariableAsItWasWhenTheValueIsAbsent) {
    std::uint32_t value = 42;
    EXPECT_FALSE(m_values.ReadUserValue("EnableSCS", value));  // not even the key
    EXPECT_TRUE(m_values.WriteUserValue("GUIPID", 0xFFFFFFFF));
    EXPECT_FALSE(m_values.ReadUserValue("EnableSCS", value));
    EXPECT_EQ(value, 42U);
    EXPECT_TRUE(m_values.ReadUserValue("GUIPID", value));
    EXPECT_EQ(value, 0xFFFFFFFFU);
}

TEST_F(UserValuesWinTest, TakesNothingButNumbers) {
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, kPath);
    ASSERT_TRUE(key);
    const BYTE bytes[8] = {'1', 0};
    ::RegSetValueExA(key->Get(), "text", 0, REG_SZ, bytes, 2);
    ::RegSetValueExA(key->Get(), "four bytes", 0, REG_BINARY, bytes, 4);
    ::RegSetValueExA(key->Get(), "long", 0, REG_QWORD, bytes, 8);
    ::RegSetValueExA(key->Get(), "short", 0, REG_DWORD, bytes, 2);
    for (const char* name : {"text", "four bytes", "long", "short"}) {
        std::uint32_t value = 42;
        EXPECT_FALSE(m_values.ReadUserValue(name, value)) << name;
        EXPECT_EQ(value, 42U) << name;
    }
}

}  // namespace
}  // namespace brennvar
