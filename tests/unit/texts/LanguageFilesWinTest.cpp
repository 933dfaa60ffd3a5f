#include <gtest/gtest.h>

#include "config/IniSnapshot_win.h"
#include "unit/texts/LanguageFile.h"

namespace brennvar::test {

// The other tests of these files trust their own reader.
TEST(LanguageFilesWinTest, TheSystemReadsEveryTextOfEveryLanguageByteForByte) {
    for (const char* language : {"English", "German", "Russian", "Slovak"}) {
        const CIniSnapshot ini(std::filesystem::absolute(LanguageFileIn(language)).make_preferred().string());
        const LanguageFile file = ReadLanguageFile(language);
        EXPECT_FALSE(file.texts.empty()) << language;
        for (const auto& [number, text] : file.texts) {
            EXPECT_EQ(ini.Read("Language", "DL_N_201_" + std::to_string(number), ""), text)
                << language << " " << number;
        }
    }
}

}  // namespace brennvar::test
