#include "prompts/FactSources_win.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/FakeClock.h"
#include "support/FakePipe.h"
#include "support/TempFolder.h"

namespace brennvar {

TEST(FactSourcesTest, LoadsTheLanguageOfTheMomentAndIsDoneWithItsFile) {
    const test::TempFolder data, installation;
    test::FakePipe pipe;
    test::FakeClock clock;
    const StopSignal stop;
    WinFactSources sources{data.Path(), installation.Path(), pipe, clock, stop};
    installation.Write("Languages/Slovak/default.ini", "[Language]\r\nDL_N_201_445=Ja\r\n");
    data.Write("settings.ini", "[Language]\r\nDirectory= \t\"Slovak \"\r\n");
    const QuestionWords words = sources.LoadWords();
    std::filesystem::remove(installation.File("Languages/Slovak/default.ini"));
    EXPECT_EQ(words.language.GetText(445, "Yes"), "Ja");
    EXPECT_EQ(words.charset, 238) << "with the letters of Eastern Europe, whatever the program began with";
}

}  // namespace brennvar
