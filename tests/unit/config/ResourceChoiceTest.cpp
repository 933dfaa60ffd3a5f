#include "config/ResourceChoice.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

// What happens when the choice is applied, in order: "ask", "send skin/language", "busy?" and "restart".
std::string Apply(const ResourceChoice& chosen, bool answer, bool isBusy) {
    std::string steps;
    const bool restart = ApplyResourceChoice(
        {"Default", "English"}, chosen,
        {.askForRestart =
             [&] {
                 steps += "ask ";
                 return answer;
             },
         .send = [&](const ResourceChoice& sent) { steps += "send " + sent.skin + "/" + sent.language + " "; },
         .isBusy =
             [&] {
                 steps += "busy? ";
                 return isBusy;
             }});
    return steps + (restart ? "restart" : "");
}

TEST(ResourceChoiceTest, SendsWhateverTheAnswerAndRestartsOnlyWhenNothingIsUnderWay) {
    EXPECT_EQ(Apply({"Default", "English"}, true, false), "");
    EXPECT_EQ(Apply({"Default", "Slovak"}, false, false), "ask send Default/Slovak ");
    EXPECT_EQ(Apply({"Graphite", "English"}, true, false), "ask send Graphite/English busy? restart");
    EXPECT_EQ(Apply({"Graphite", "Slovak"}, true, true), "ask send Graphite/Slovak busy? ");
    EXPECT_EQ(Apply({"Default", "english"}, false, false), "ask send Default/english ");
}

}  // namespace
}  // namespace brennvar
