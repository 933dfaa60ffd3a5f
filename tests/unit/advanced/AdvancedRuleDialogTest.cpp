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
#include "ui/ToolkitIds.h"

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
    static std::string Sentence() { return TextOfWindow(Item(IDC_RULE_SENTENCE)); }
    static void Type(RuleField field, const std::string& text) {
        ::SetFocus(Field(field));
        ::SetWindowTextA(Field(field), text.c_str());
    }
    static void Press(int id) { ::SendMessageA(Item(id), BM_CLICK, 0, 0); }
    // Closes a message, which has to say this.
    static void Read(const char* message) {
        EXPECT_EQ(TextOfWindow(Item(IDC_MESSAGE)), message);
        Press(IDOK);
    }
};

TEST_F(AdvancedRuleDialogTest, LeadsToWhatIsMissingAndAnswersTheRuleThatWasTyped) {
    owner.Post([] { EXPECT_FALSE(::IsWindowEnabled(Item(IDOK))); });
    owner.PostKey(VK_RETURN);
    owner.Post([] { Read("Description is missing!"); });
    owner.Post([] {
        EXPECT_EQ(::GetFocus(), Field(Description));
        EXPECT_EQ(Remark(Description), "Description is missing!");
        EXPECT_EQ(Sentence(), "Description is missing! So far: Deny all traffic");
        Type(Description, "Mine");
        EXPECT_EQ(Remark(Description), "");
        EXPECT_TRUE(::IsWindowEnabled(Item(IDOK)));
        Press(IDC_RULE_ALLOW);
        Type(RemoteHost, "192.0.2.0/24");
        EXPECT_EQ(Remark(RemoteMask), "The mask stands with the address.");
        EXPECT_FALSE(::IsWindowEnabled(Field(RemoteMask)));
        Type(RemotePorts, "http");
        EXPECT_EQ(Sentence(), "Allow all traffic to or from 192.0.2.0/24, of TCP and UDP only remote port 80");
        Type(RemotePorts, "htt");
        EXPECT_EQ(Remark(RemotePorts), "") << "not before the field is left";
        EXPECT_FALSE(::IsWindowEnabled(Item(IDOK)));
    });
    // The button that is disabled is clicked: its parent is told.
    owner.Post([] {
        RECT place{};
        ::GetWindowRect(Item(IDOK), &place);
        ::MapWindowPoints(nullptr, ::GetActiveWindow(), reinterpret_cast<POINT*>(&place), 2);
        ::PostMessageA(::GetActiveWindow(), WM_LBUTTONDOWN, 0, MAKELPARAM(place.left + 2, place.top + 2));
    });
    owner.Post([] { Read("No service of this protocol has this name."); });
    owner.Post([] {
        EXPECT_EQ(::GetFocus(), Field(RemotePorts));
        Type(RemotePorts, "443");
        Press(IDC_RULE_HOURS);
        Press(IDC_RULE_DATES);
    });
    owner.PostKey(VK_RETURN);
    const std::optional<AdvancedRule> rule = editor.AskNew({});
    ASSERT_TRUE(rule);
    AdvancedRule wanted{.action = AdvancedAction::Allow,
                        .hours = RuleHours{.first = 480, .last = 1020},
                        .dates = RuleDates{.first = clock.Today(), .last = clock.Today()},
                        .description = "Mine"};
    wanted.remote = {.kind = RuleEnd::Kind::Ipv4,
                     .address = ParseIpv4("192.0.2.0").value_or(0),
                     .mask = MaskOf(24),
                     .firstPort = 443,
                     .lastPort = 443};
    EXPECT_EQ(*rule, wanted);
    EXPECT_EQ(choices.asked, "forget;");
}

TEST_F(AdvancedRuleDialogTest, LooksUpNamesOnRequestAndOffersWhatWasFound) {
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
        ::SetFocus(Field(RemoteHost));
    });
    for (const WPARAM key : {VK_F4, VK_DOWN, VK_DOWN, VK_RETURN}) owner.PostKey(key);
    owner.Post([] {});  // the menu has closed
    owner.Post([this] {
        EXPECT_EQ(TextOfWindow(Field(RemoteHost)), "192.0.2.9");
        EXPECT_EQ(Remark(RemoteHost), "");
        choices.users({"HOME\\fred", "HOME\\wilma"});
        ::SetFocus(Field(User));
    });
    for (const WPARAM key : {VK_F4, VK_DOWN, VK_DOWN, VK_RETURN}) owner.PostKey(key);
    owner.Post([] {});  // the menu has closed
    owner.Post([] { EXPECT_EQ(TextOfWindow(Field(User)), "HOME\\wilma"); });
    owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(editor.AskNew({}));
    // Whoever asked has gone.
    choices.programs({"x"});
    choices.addresses({1});
}

TEST_F(AdvancedRuleDialogTest, TellsWhereAStoredRuleStandsAndMendsADamagedOne) {
    const AdvancedRule stored{.id = 42, .description = "Stored", .isDamaged = true};
    owner.Post([] {
        const std::string note = TextOfWindow(Item(IDC_RULE_NOTE));
        EXPECT_NE(note.find("this is number 3 of 12."), std::string::npos) << note;
        EXPECT_NE(note.find("damaged"), std::string::npos) << note;
        EXPECT_EQ(TextOfWindow(::GetActiveWindow()), "Edit rule");
        Press(IDOK);
    });
    AdvancedRule mended = stored;
    mended.isDamaged = false;
    EXPECT_EQ(editor.AskChange(stored, {.number = 3, .count = 12}), mended);
    editor.SetOwner(nullptr);
    EXPECT_FALSE(editor.AskNew({})) << "nobody to ask";
}

}  // namespace
}  // namespace brennvar
