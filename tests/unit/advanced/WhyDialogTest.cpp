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
#include "tree/TreeMessages_win.h"
#include "ui/ChildControls_win.h"

namespace brennvar {
namespace {

class Pages final : public PageOwner {
public:
    std::vector<std::pair<int, std::string>> opened;

private:
    void OpenPageAt(int command, const std::string& key) override { opened.emplace_back(command, key); }
    void Notify(const std::string&, const std::string&) override {}
    void OpenTool(AddressTool, const std::string&) override {}
    void MakeRule(const TrafficFacts&) override {}
    void Explain(const TrafficFacts&) override {}
};

class WhyDialogTest : public testing::Test {
protected:
    WhyDialogTest() {
        AdvancedRule mail = test::RuleIn("allow tcp out rp=993");
        mail.id = 7;
        mail.description = "Mail";
        std::string program = "C:\\a.exe";
        program.resize(260, '\0');
        folder.Write("Rules\\rules_advanced.conf", test::EncipherByHand(test::BytesOf(EncodeRule(mail)), 712));
        folder.Write("Rules\\rules.conf", test::EncipherByHand(program + std::string("\1\0\0\0", 4), 264));
    }
    void Ask(const char* facts) { dialog.AskNear(owner.Window(), test::FactsIn(facts)); }
    [[nodiscard]] std::string Answer() const { return TextOfWindow(dialog.Item(IDC_WHY_ANSWER)); }
    void Type(WhyField field, const char* text) {
        ::SetWindowTextA(dialog.Item(IDC_WHY_FIELD_FIRST + static_cast<int>(field)), text);
    }
    LRESULT List(UINT message, WPARAM wParam = 0) {
        return ::SendMessageA(dialog.Item(IDC_WHY_LINES), message, wParam, 0);
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

TEST_F(WhyDialogTest, AnswersWhatIsTypedAndLeadsToTheRule) {
    Ask(R"(tcp out rp=993 r=192.0.2.1 p=C:\a.exe)");
    EXPECT_EQ(Answer(), "The rules are being read...");
    reads.RunAll();
    EXPECT_EQ(Answer(), "Allowed by the advanced rule 'Mail'.");
    EXPECT_EQ(List(kTreeGetFocusedRow), 2) << "the line that decides";
    ::SendMessageA(dialog.Item(IDC_WHY_SHOW), BM_CLICK, 0, 0);
    EXPECT_EQ(pages.opened, (std::vector<std::pair<int, std::string>>{{IDM_ADVANCED, "7"}}));

    Type(WhyField::RemotePort, "994");
    EXPECT_EQ(Answer(), "Denied by the rule of the program a.exe.");
    EXPECT_EQ(reads.Waiting(), 0U) << "nothing is read for that";
    Type(WhyField::Time, "25:00");
    EXPECT_EQ(Answer(), "This cannot be understood: Time");
    EXPECT_FALSE(::IsWindowEnabled(dialog.Item(IDC_WHY_SHOW)));
    Type(WhyField::Time, "");
    blocked.Add(*ParseIpv4("192.0.2.9"), clock.UtcNow(), 60);
    Type(WhyField::RemoteAddress, "192.0.2.9");
    EXPECT_EQ(Answer(), "Denied: this address is blocked.");
}

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
    // A row that was seen with another protocol, while it is open.
    Ask("47 out r=192.0.2.1 p=C:\\a.exe");
    reads.RunAll();
    EXPECT_EQ(TextOfWindow(dialog.Item(IDC_WHY_FIELD_FIRST + static_cast<int>(WhyField::Protocol))), "IP 47");
    EXPECT_EQ(Answer(), "Denied by the rule of the program a.exe.");
}

}  // namespace
}  // namespace brennvar
