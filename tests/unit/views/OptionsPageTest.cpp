#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/ResourceIds.h"
#include "ui/ChildControls_win.h"
#include "views/OptionsPage_win.h"

namespace brennvar {
namespace {

class FakeUserValues final : public UserValues {
public:
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return true; }
};

constexpr int kResourcesSection = 7;

class OptionsPageTest : public testing::Test {
protected:
    CFonts fonts;
    Language language{nullptr};
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    std::vector<std::string> skins = {"Graphite", "Default"};
    std::vector<std::string> languages = {"slovak", "Slovak", "English"};
    ResourceChoice current = {"Default", "Slovak"};
    bool takes = true;
    std::vector<std::string> applied;
    std::optional<OptionValues> stored = OptionValues();
    FakeUserValues userValues;
    // What waits for the service or the password.
    std::vector<std::function<void()>> delivered;
    std::function<void()> refused;
    std::optional<OptionsPage> page;

    void SetUp() override {
        const OptionsPage::Resources resources{
            .skins = [this] { return skins; },
            .languages = [this] { return languages; },
            .current = [this] { return current; },
            .apply =
                [this](const ResourceChoice& from, const ResourceChoice& to) {
                    applied.push_back(from.skin + "/" + from.language + " to " + to.skin + "/" + to.language);
                    return takes;
                }};
        const OptionsPage::Services services{
            .readOptions = [this](const auto& done) { done(stored); },
            .stampOptions = [] { return FileStamp(); },
            .checkPassword =
                [this](HWND, const std::function<void()>& action, std::function<void()> no) {
                    if (!refused) return action();
                    refused = std::move(no);
                },
            .send = [this](const auto&, auto done) { delivered.push_back(std::move(done)); },
            .sendProxyPort = [](std::uint32_t, const auto&) {},
            .userValues = userValues};
        page.emplace(fonts, language, PageTexts{.title = "title", .line = "line", .empty = {}}, resources,
                     services);
        ASSERT_TRUE(page->Create(parent));
        page->Place({0, 0, 800, 500});
        page->Show();
    }
    ~OptionsPageTest() override { ::DestroyWindow(parent); }

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
        ::EnumChildWindows(page->Window(), look, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    LRESULT Ask(int id, UINT message, WPARAM parameter = 0) const {
        return ::SendMessageA(Find(id), message, parameter, 0);
    }
    void OpenSection(int index) const {
        Ask(IDC_OPTIONS_SECTIONS, LB_SETCURSEL, static_cast<WPARAM>(index));
        ::SendMessageA(page->Window(), WM_COMMAND, MAKEWPARAM(IDC_OPTIONS_SECTIONS, LBN_SELCHANGE), 0);
    }
    void Apply() const { Ask(IDC_OPTIONS_APPLY, BM_CLICK); }
    std::string Note() const { return TextOfWindow(Find(IDC_OPTIONS_NOTE)); }
};

TEST_F(OptionsPageTest, ComparesWithWhatWasSentLast) {
    OpenSection(kResourcesSection);
    Ask(IDC_OPTIONS_LANGUAGE, CB_SETCURSEL, 2);
    takes = false;
    Apply();
    takes = true;
    Apply();
    Ask(IDC_OPTIONS_SKIN, CB_SETCURSEL, 0);
    Apply();
    Apply();
    EXPECT_EQ(applied, (std::vector<std::string>{
                           "Default/Slovak to Default/English", "Default/Slovak to Default/English",
                           "Default/English to Graphite/English", "Graphite/English to Graphite/English"}));
}

TEST_F(OptionsPageTest, NothingSelectedChangesNothing) {
    OpenSection(kResourcesSection);
    languages.clear();
    current.skin = "Gone";
    page->Reload();
    EXPECT_EQ(Ask(IDC_OPTIONS_LANGUAGE, CB_GETCOUNT), 0);
    EXPECT_EQ(Ask(IDC_OPTIONS_SKIN, CB_GETCURSEL), CB_ERR);
    Apply();
    EXPECT_EQ(applied, std::vector<std::string>{"Gone/Slovak to Gone/Slovak"});
}

TEST_F(OptionsPageTest, KeepsEditsWhenThePasswordIsRefused) {
    refused = [] {};
    Ask(1006, BM_CLICK);
    Apply();
    EXPECT_EQ(Note(), "Applying...");
    refused();
    EXPECT_TRUE(delivered.empty());
    EXPECT_EQ(Ask(1006, BM_GETCHECK), BST_CHECKED);
    EXPECT_EQ(Note(), "Changes are not applied yet.");
}

TEST_F(OptionsPageTest, AFileThatCannotBeReadLeavesTheFieldsAsTheyWere) {
    stored->SetNumber(OptionId::ShowBlockedMessages, 1);
    page->Reload();
    ASSERT_EQ(Ask(1006, BM_GETCHECK), BST_CHECKED);
    stored.reset();
    page->Reload();
    EXPECT_EQ(Ask(1006, BM_GETCHECK), BST_CHECKED);
    stored.emplace();  // the file is let go of, unchanged or not
    ::SendMessageA(page->Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(Ask(1006, BM_GETCHECK), BST_UNCHECKED);
}

TEST_F(OptionsPageTest, ABatchThatEndsLateOrAfterThePageDoesNothing) {
    Ask(1006, BM_CLICK);
    Apply();
    EXPECT_EQ(Note(), "Applying...");
    stored->SetNumber(OptionId::ShowBlockedMessages, 1);
    delivered.at(0)();
    EXPECT_EQ(Note(), "Stored.");
    Ask(1005, BM_CLICK);
    Apply();
    // The first one's end again, as of one that was given up before: it says nothing about this one.
    stored->SetNumber(OptionId::ShowSecurityMessages, 0);
    delivered.at(0)();
    EXPECT_EQ(Note(), "Applying...");
    page.reset();
    delivered.at(1)();
}

TEST_F(OptionsPageTest, BringsTheFieldWithTheKeyboardIntoSight) {
    page->Place({0, 0, 400, 240});
    OpenSection(2);
    for (const int id : {1041, 1027}) {
        ::SetFocus(Find(id));
        for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) ::DispatchMessageA(&message);
        RECT form{}, field{}, both{};
        ::GetWindowRect(Find(IDC_OPTIONS_FORM), &form);
        ::GetWindowRect(Find(id), &field);
        ::IntersectRect(&both, &form, &field);
        EXPECT_TRUE(::EqualRect(&both, &field)) << id;
    }
}

}  // namespace
}  // namespace brennvar
