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
    installation.Write("Languages/Deutsch/default.ini", "[Language]\r\nDL_N_201_445=Ja\r\n");
    EXPECT_EQ(sources.LoadLanguage().GetText(445, "Yes"), "Yes");
    data.Write("settings.ini", "[Language]\r\nDirectory= \t\"Deutsch \"\r\n");
    const Language language = sources.LoadLanguage();
    std::filesystem::remove(installation.File("Languages/Deutsch/default.ini"));
    EXPECT_EQ(language.GetText(445, "Yes"), "Ja");
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
