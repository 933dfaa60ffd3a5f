#include "prompts/PromptWorld_win.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"
#include "support/FakePipe.h"
#include "support/TempFolder.h"

namespace brennvar {

TEST(PromptWorldWinTest, LoadsTheLanguageOfTheMomentAndSendsAnAnswerOnceOnly) {
    const test::TempFolder data, installation;
    test::FakePipe pipe;
    test::FakeClock clock;
    WinPromptWorld world{data.Path(), installation.Path(), pipe, clock, [](const auto&) { return PromptAnswer{}; }};
    installation.Write("Languages/Deutsch/default.ini", "[Language]\r\nDL_N_201_445=Ja\r\n");
    EXPECT_EQ(world.LoadLanguage().GetText(445, "Yes"), "Yes");
    data.Write("settings.ini", "[Language]\r\nDirectory= \t\"Deutsch \"\r\n");
    EXPECT_EQ(world.LoadLanguage().GetText(445, "Yes"), "Ja");

    pipe.failingWaits = test::FakePipe::kAlways;
    world.SendAnswer(ConnectionPromptAnswer{});
    EXPECT_TRUE(pipe.writes.empty());
    EXPECT_EQ(pipe.waits, std::vector<std::chrono::milliseconds>{std::chrono::seconds(20)});
}

}  // namespace brennvar
