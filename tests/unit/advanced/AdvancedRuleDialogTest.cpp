#include "advanced/AdvancedRuleDialog_win.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "advanced/RuleEditor_win.h"
#include "config/ResourceIds.h"
#include "support/FakeClock.h"
#include "support/ModalOwner_win.h"
#include "ui/ChildControls_win.h"

namespace brennvar {
namespace {

using enum RuleField;

// Tells what the test says, when it says so.
class ToldChoices final : public RuleChoices {
public:
    void FindPrograms(Told told) override { programs = std::move(told); }
    void FindUsers(Told told) override { users = std::move(told); }
    void LookUp(const std::string& host, std::function<void(std::vector<Ipv4>)> told) override {
        asked += host + ';';
        addresses = std::move(told);
    }
    void StopLookUp() override { asked += "stop;"; }
    void Forget() override { asked += "forget;"; }

    std::string asked;
    Told programs;
    Told users;
    std::function<void(std::vector<Ipv4>)> addresses;
};

class AdvancedRuleDialogTest : public testing::Test {
protected:
    test::ModalOwner owner;
    CFonts fonts;
    const Language language{nullptr};
    ToldChoices choices;
    test::FakeClock clock;
    WinRuleEditor editor{{.fonts = fonts, .language = language, .choices = choices, .clock = clock}};

    void SetUp() override { editor.SetOwner(owner.Window()); }
    static HWND Item(int id) { return ::GetDlgItem(::GetActiveWindow(), id); }
    static HWND Field(RuleField field) { return Item(IDC_RULE_FIELD + static_cast<int>(field)); }
    static std::string Remark(RuleField field) {
        return TextOfWindow(Item(IDC_RULE_REMARK + static_cast<int>(field)));
    }
    static void Type(RuleField field, const std::string& text) {
        ::SetFocus(Field(field));
        ::SetWindowTextA(Field(field), text.c_str());
    }
    static void Press(int id) { ::SendMessageA(Item(id), BM_CLICK, 0, 0); }
};

TEST_F(AdvancedRuleDialogTest, LooksUpNamesOnRequestAndTakesWhatWasFoundInTime) {
    owner.Post([this] {
        EXPECT_FALSE(::IsWindowEnabled(Item(IDC_RULE_LOOK_UP_REMOTE)));
        Type(RemoteHost, " www.example.com ");
        Press(IDC_RULE_LOOK_UP_REMOTE);
        EXPECT_EQ(choices.asked, "www.example.com;");
        EXPECT_EQ(Remark(RemoteHost), "Looking it up...");
        choices.addresses({});
        EXPECT_EQ(Remark(RemoteHost), "This name has no IPv4 address.");
        Press(IDC_RULE_LOOK_UP_REMOTE);
    });
    owner.PostKey(VK_ESCAPE);  // stops it, and leaves the dialog
    owner.Post([this] {
        EXPECT_EQ(choices.asked, "www.example.com;www.example.com;stop;");
        choices.addresses({1});  // comes too late
        EXPECT_EQ(TextOfWindow(Field(RemoteHost)), " www.example.com ");
        Press(IDC_RULE_LOOK_UP_REMOTE);
        choices.addresses({ParseIpv4("192.0.2.7").value_or(0)});
        EXPECT_EQ(TextOfWindow(Field(RemoteHost)), "192.0.2.7");
        EXPECT_EQ(::GetFocus(), Field(RemoteHost));
        Type(RemoteHost, "www.example.org");
        Press(IDC_RULE_LOOK_UP_REMOTE);
        ::SetFocus(Field(Description));
        choices.addresses({ParseIpv4("192.0.2.8").value_or(0), ParseIpv4("192.0.2.9").value_or(0)});
        EXPECT_EQ(::GetFocus(), Field(Description)) << "the user types there";
        EXPECT_EQ(Remark(RemoteHost), "It has several addresses: F4 offers them.");
    });
    owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(editor.AskNew({}));
    // Whoever asked has gone.
    choices.programs({"x"});
    choices.addresses({1});
}

}  // namespace
}  // namespace brennvar
