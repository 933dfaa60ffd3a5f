#include <gtest/gtest.h>

#include "base/Windows_win.h"
#include "config/IniSnapshot_win.h"
#include "config/Ini_win.h"
#include "config/RegKey_win.h"
#include "config/UserValues_win.h"
#include "support/TempFolder.h"

namespace brennvar {

TEST(IniWinTest, SnapshotReadsWhatSingleLookUpsRead) {
    const test::TempFolder folder;
    const std::string path = folder.Write("default.ini",
                                          "; comment\r\n[Other]\r\nplain=other\r\n[Color]\r\nplain=1\r\n"
                                          " blanks =  2 3 \r\nquoted=\" a \"\r\nsingle='b'\r\nempty=\r\n"
                                          "half=\"c\r\nUPPER=x=y\r\nplain=second\r\n;off=1\r\nno value\r\nlong=" +
                                              std::string(0x4100, 'z') + "\r\nlast=\xE4");
    const CIni single(path);
    const CIniSnapshot snapshot(path);
    for (const char* key : {"plain", "PLAIN", "blanks", "quoted", "single", "empty", "half", "upper", "off", "long",
                            "last", "absent"}) {
        EXPECT_EQ(snapshot.Read("Color", key, " none "), single.Read("Color", key, " none ")) << key;
    }
    EXPECT_EQ(snapshot.Read("other", "plain", ""), "other");
    EXPECT_EQ(snapshot.Read("Absent", "plain", "x"), "x");
    EXPECT_EQ(CIniSnapshot(path + ".absent").Read("Color", "plain", "x"), "x");
}

TEST(UserValuesWinTest, LeavesTheVariableAsItWasUnlessThereIsANumber) {
    constexpr char kPath[] = R"(Software\Quorlan\Brennvar Tests\Values)";
    ::RegDeleteKeyA(HKEY_CURRENT_USER, kPath);
    WinUserValues values{kPath};
    std::uint32_t value = 42;
    EXPECT_FALSE(values.ReadUserValue("GUIPID", value));  // not even the key
    EXPECT_TRUE(values.WriteUserValue("GUIPID", 0xFFFFFFFF));
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, kPath);
    const BYTE bytes[8] = {'1', 0};
    ::RegSetValueExA(key->Get(), "four bytes", 0, REG_BINARY, bytes, 4);
    ::RegSetValueExA(key->Get(), "long", 0, REG_QWORD, bytes, 8);
    ::RegSetValueExA(key->Get(), "short", 0, REG_DWORD, bytes, 2);
    for (const char* name : {"absent", "four bytes", "long", "short"}) {
        EXPECT_FALSE(values.ReadUserValue(name, value)) << name;
        EXPECT_EQ(value, 42U) << name;
    }
    EXPECT_TRUE(values.ReadUserValue("GUIPID", value));
    EXPECT_EQ(value, 0xFFFFFFFFU);
    ::RegDeleteKeyA(HKEY_CURRENT_USER, kPath);
}

}  // namespace brennvar
