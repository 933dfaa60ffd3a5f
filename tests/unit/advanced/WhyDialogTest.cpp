#include "advanced/WhyDialog_win.h"

#include <gtest/gtest.h>

#include "config/ResourceIds.h"
#include "support/FakeClock.h"
#include "support/FakeOptions.h"
#include "support/FakeTaskQueue.h"
#include "support/GoldenCipher.h"
#include "support/ModalOwner_win.h"
#include "support/RuleWords.h"
#include "support/TempFolder.h"
#include "ui/ChildControls_win.h"

namespace brennvar {
namespace {

class Pages final : public PageOwner {
    void OpenPageAt(int, const std::string&) override {}
    void Notify(const std::string&, const std::string&) override {}
    void OpenTool(AddressTool, const std::string&) override {}
    void MakeRule(const TrafficFacts&) override {}
    void Explain(const TrafficFacts&) override {}
};

class WhyDialogTest : public testing::Test {
protected:
    WhyDialogTest() {
        std::string program = "C:\\a.exe";
        program.resize(260, '\0');
        folder.Write("Rules\\rules.conf", test::EncipherByHand(program + std::string("\1\0\0\0", 4), 264));
    }
    void Ask(const char* facts) { dialog.AskNear(owner.Window(), test::FactsIn(facts)); }
    [[nodiscard]] std::string Answer() const { return TextOfWindow(dialog.Item(IDC_WHY_ANSWER)); }
    void Type(WhyField field, const char* text) {
        ::SetWindowTextA(dialog.Item(IDC_WHY_FIELD_FIRST + static_cast<int>(field)), text);
    }

    test::TempFolder folder;
    test::FakeClock clock;
    test::FakeTaskQueue reads;
    test::FakeOptions options;
    DecisionFiles files{folder.Path(), clock, options};
    BlockedAddresses blocked;
    Pages pages;
    CFonts fonts;
    Language language{nullptr};
    test::ModalOwner owner;
    WhyDialog dialog{{fonts, language, reads, files, blocked, clock, pages}};
};

TEST_F(WhyDialogTest, LooksUpTheRuleOfTheProgramThatIsTypedLast) {
    Ask("tcp out rp=80 r=192.0.2.1 p=C:\\b.exe");
    reads.RunAll();
    EXPECT_EQ(Answer(), "You would be asked.");
    Type(WhyField::Program, "C:\\c.exe");
    Type(WhyField::Program, "C:\\d.exe");
    Type(WhyField::Program, "c:\\A.exe");
    EXPECT_EQ(reads.Waiting(), 1U);
    reads.Run();  // of the first one comes too late
    EXPECT_EQ(Answer(), "It cannot be told: that depends on what is not known here.");
    reads.Run();
    EXPECT_EQ(Answer(), "Denied by the rule of the program A.exe.");
    EXPECT_EQ(reads.Waiting(), 0U);
}

}  // namespace
}  // namespace brennvar
