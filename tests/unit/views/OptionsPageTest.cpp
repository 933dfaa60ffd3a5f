#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "config/ResourceIds.h"
#include "support/DrawnTexts_win.h"
#include "support/ListRig.h"
#include "support/ModalOwner_win.h"
#include "support/OptionsRig.h"
#include "tree/TreeMessages_win.h"
#include "ui/ChildControls_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/ToolkitIds.h"
#include "views/OptionsPage_win.h"

namespace brennvar {
namespace {

constexpr int kMiscellaneousSection = 3, kFilteringSection = 6, kTrustedSection = 7, kResourcesSection = 8;

class OptionsPageTest : public testing::Test, protected test::OptionsRig {
protected:
    CFonts fonts;
    Language language{nullptr};
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    test::FakeList trusted;
    test::FakeList sites;
    OptionsPage page{fonts,
                     language,
                     PageTexts{.title = "title", .line = "line"},
                     Parts(),
                     {.trusted = trusted.Source(), .sites = sites.Source()}};

    void SetUp() override {
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 800, 500});
        page.Show();
        reads.RunAll();
    }
    ~OptionsPageTest() override { EndWindow(parent); }

    HWND Find(int id) const {
        struct Search {
            int id;
            HWND found = nullptr;
        } search{id};
        const auto look = [](HWND window, LPARAM wanted) -> BOOL {
            auto& sought = *reinterpret_cast<Search*>(wanted);
            if (::GetDlgCtrlID(window) == sought.id && ::IsWindowVisible(window)) sought.found = window;
            return sought.found == nullptr;
        };
        ::EnumChildWindows(page.Window(), look, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    LRESULT Ask(int id, UINT message, WPARAM parameter = 0) const {
        return ::SendMessageA(Find(id), message, parameter, 0);
    }
    void OpenSection(int index) const {
        Ask(IDC_OPTIONS_SECTIONS, LB_SETCURSEL, static_cast<WPARAM>(index));
        ::SendMessageA(page.Window(), WM_COMMAND, MAKEWPARAM(IDC_OPTIONS_SECTIONS, LBN_SELCHANGE), 0);
    }
    // As of a program that does not look whether the button is enabled.
    void Apply() const { ::SendMessageA(page.Window(), WM_COMMAND, IDC_OPTIONS_APPLY, 0); }
    bool IsEnabled(int id) const { return ::IsWindowEnabled(Find(id)) != FALSE; }
    std::string Note() const { return test::DrawnText(page.Window(), IDC_OPTIONS_NOTE).value_or("none"); }
};

TEST_F(OptionsPageTest, TellsWhatAnOptionDoesAndBringsBackWhatIsStored) {
    const auto help = [this] { return test::DrawnText(page.Window(), IDC_OPTIONS_HELP).value_or("none"); };
    const std::string hint = "Point at an option to read what it does.";
    const HWND box = Find(1007);  // loads at startup
    EXPECT_EQ(help(), hint);
    // Windows asks the control's parents before the control.
    ::SendMessageA(box, WM_SETCURSOR, reinterpret_cast<WPARAM>(box), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    const std::string sentence = help();
    EXPECT_NE(sentence, hint);
    ::SendMessageA(page.Window(), kControlFocused, 0, reinterpret_cast<LPARAM>(Find(1005)));
    EXPECT_NE(help(), hint);
    EXPECT_NE(help(), sentence);
    ::SendMessageA(page.Window(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Find(IDC_OPTIONS_APPLY)), 0);
    EXPECT_NE(help(), hint) << "what is no option leaves it";

    EXPECT_FALSE(IsEnabled(IDC_OPTIONS_DISCARD));
    const LRESULT before = Ask(1007, BM_GETCHECK);
    Ask(1007, BM_CLICK);
    EXPECT_NE(Ask(1007, BM_GETCHECK), before);
    EXPECT_TRUE(IsEnabled(IDC_OPTIONS_DISCARD));
    Ask(IDC_OPTIONS_DISCARD, BM_CLICK);
    EXPECT_EQ(Ask(1007, BM_GETCHECK), before);
    EXPECT_FALSE(IsEnabled(IDC_OPTIONS_DISCARD));
    OpenSection(kMiscellaneousSection);
    EXPECT_EQ(help(), hint);
}

TEST_F(OptionsPageTest, OffersToApplyWhatIsNotStored) {
    page.Reload();
    reads.RunAll();
    EXPECT_FALSE(IsEnabled(IDC_OPTIONS_APPLY)) << "nothing is changed";
    Ask(1007, BM_CLICK);
    EXPECT_TRUE(IsEnabled(IDC_OPTIONS_APPLY));
    Ask(1007, BM_CLICK);
    EXPECT_FALSE(IsEnabled(IDC_OPTIONS_APPLY)) << "taken back";
    // A program that sets the box tells nobody: it is found within the second.
    constexpr WPARAM kWatchTimer = 1;
    Ask(1007, BM_SETCHECK, Ask(1007, BM_GETCHECK) == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED);
    ::SendMessageA(page.Window(), WM_TIMER, kWatchTimer, 0);
    EXPECT_TRUE(IsEnabled(IDC_OPTIONS_APPLY));
    Ask(IDC_OPTIONS_APPLY, BM_CLICK);
    EXPECT_EQ(Note(), "Applying...");
    EXPECT_FALSE(IsEnabled(IDC_OPTIONS_APPLY)) << "it is on its way";
}

TEST_F(OptionsPageTest, NothingSelectedChangesNothing) {
    OpenSection(kResourcesSection);
    EXPECT_EQ(Ask(IDC_OPTIONS_LANGUAGE, CB_GETCURSEL), 1) << "not the name in other letters";
    resources.languages.clear();
    resources.current.skin = "Gone";
    page.Reload();
    EXPECT_EQ(Ask(IDC_OPTIONS_LANGUAGE, CB_GETCOUNT), 0);
    EXPECT_EQ(Ask(IDC_OPTIONS_SKIN, CB_GETCURSEL), CB_ERR);
    Apply();
    EXPECT_EQ(resources.applied, std::vector<std::string>{"Gone/Slovak to Gone/Slovak"});
}

TEST_F(OptionsPageTest, KeepsATypeOfProxyThatItDoesNotKnowUntilOneIsChosen) {
    source.values->SetNumber(OptionId::ProxyType, 2);
    OpenSection(kMiscellaneousSection);
    page.Reload();
    reads.RunAll();
    EXPECT_EQ(Ask(1070, CB_GETCOUNT), 2);
    EXPECT_EQ(Ask(1070, CB_GETCURSEL), CB_ERR);
    const auto sent = [&] {
        Apply();
        // Options 64 to 70, then the event. The value of a record stands at 5468.
        return static_cast<int>(rig.TakeRecords().at(6).at(5468));
    };
    EXPECT_EQ(sent(), 2);
    reads.RunAll();
    EXPECT_EQ(Note(), "Stored.");
    Ask(1070, CB_SETCURSEL, 1);  // a program chooses: nothing is told
    EXPECT_EQ(sent(), 1);
}

TEST_F(OptionsPageTest, RemovesTheSitesThatAreSelectedAndKeepsTheOthersSelected) {
    OpenSection(kTrustedSection);
    EXPECT_EQ(Find(IDC_OPTIONS_APPLY), nullptr) << "there is nothing to apply";
    OpenSection(kFilteringSection);
    EXPECT_NE(Find(IDC_OPTIONS_APPLY), nullptr);
    sites.entries = {{{1, "a"}, {2, "b"}, {3, "c"}}};
    page.Reload();
    reads.RunAll();
    EXPECT_FALSE(::IsWindowEnabled(Find(IDC_SITES_REMOVE)));
    EXPECT_EQ(Ask(IDC_SITES_LIST, kTreeGetRowCount), 3);
    Ask(IDC_SITES_LIST, kTreeSelectRow, 1);
    EXPECT_TRUE(::IsWindowEnabled(Find(IDC_SITES_REMOVE)));
    sites.entries->erase(sites.entries->begin());
    page.Reload();
    reads.RunAll();
    Ask(IDC_SITES_REMOVE, BM_CLICK);
    EXPECT_EQ(Note(), "Applying...");
    rig.Settle();
    ASSERT_EQ(rig.Pipe().requests.size(), 1U);
    EXPECT_EQ(rig.Pipe().requests[0].bytes.at(5132), std::byte{2});
}

TEST_F(OptionsPageTest, TellsToRestartTheBrowserAlsoOnTheWayOut) {
    OpenSection(kFilteringSection);
    Ask(IDC_FILTER_ADS, BM_CLICK);
    test::ModalOwner steps;
    std::string shown;
    const auto press = [&] {
        const HWND dialog = ::GetActiveWindow();
        shown += TextOfWindow(::GetDlgItem(dialog, IDC_MESSAGE)) + "\n";
        ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
    };
    steps.Post(press);
    steps.Post(press);
    EXPECT_TRUE(page.MayLeave());
    EXPECT_EQ(shown,
              "This section has changes that are not applied yet. Do you want to apply them?\n"
              "Please restart your Internet browser to apply changes.\n");
}

TEST_F(OptionsPageTest, BringsTheFieldWithTheKeyboardIntoSight) {
    page.Place({0, 0, 400, 240});
    OpenSection(2);
    for (const int id : {IDM_TEST_MAIL_HERE, 1027}) {
        ::SetFocus(Find(id));
        for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) ::DispatchMessageA(&message);
        RECT form{}, field{}, both{};
        ::GetWindowRect(Find(IDC_OPTIONS_FORM), &form);
        ::GetWindowRect(Find(id), &field);
        ::IntersectRect(&both, &form, &field);
        EXPECT_TRUE(::EqualRect(&both, &field)) << id;
    }
    // It does not stay in a field that cannot be worked with any more.
    constexpr int kNotification = 1034, kFrom = 1035;
    Ask(kNotification, BM_CLICK);
    ::SetFocus(Find(kFrom));
    ::SendMessageA(page.Window(), WM_COMMAND, MAKEWPARAM(IDC_OPTIONS_DISCARD, BN_CLICKED), 0);
    EXPECT_EQ(::GetFocus(), Find(kNotification));
}

}  // namespace
}  // namespace brennvar
