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
    EXPECT_EQ(sources.LoadWords().language.GetText(445, "Yes"), "Yes");
    EXPECT_EQ(sources.LoadWords().charset, 0);
    data.Write("settings.ini", "[Language]\r\nDirectory= \t\"Slovak \"\r\n");
    const QuestionWords words = sources.LoadWords();
    std::filesystem::remove(installation.File("Languages/Slovak/default.ini"));
    EXPECT_EQ(words.language.GetText(445, "Yes"), "Ja");
    EXPECT_EQ(words.charset, 238) << "with the letters of Eastern Europe, whatever the program began with";
}

TEST(FactSourcesTest, IsNoMorePatientForAPathThanTheQuestion) {
    test::FakePipe pipe;
    test::FakeClock clock;
    const StopSignal stop;
    pipe.failingWaits = test::FakePipe::kAlways;
    const FileTime start = clock.now;
    EXPECT_EQ(WinFactSources("", "", pipe, clock, stop).ResolveProcessPath(4711), std::nullopt);
    EXPECT_EQ(pipe.waits.size(), 5U);
    EXPECT_LT(clock.now - start, 2 * kFileTimePerSecond);
}

}  // namespace brennvar
