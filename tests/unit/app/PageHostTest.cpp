#include "app/PageHost.h"

#include <gtest/gtest.h>

#include "ui/Controls.h"

namespace brennvar {
namespace {

class CountingPage final : public CPage {
public:
    CountingPage(const CFonts& fonts, std::string title) : CPage(fonts, std::move(title), "line") {}
    int shown = 0;
    int hidden = 0;
    int rulesChanged = 0;
    void OnRulesChanged() override { ++rulesChanged; }

private:
    void OnShow() override { ++shown; }
    void OnHide() override { ++hidden; }
};

class PageHostTest : public testing::Test {
protected:
    CFonts fonts;
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    CountingPage* first = nullptr;
    CountingPage* second = nullptr;
    PageHost host;

    void SetUp() override {
        auto one = std::make_unique<CountingPage>(fonts, "One");
        auto two = std::make_unique<CountingPage>(fonts, "Two");
        first = one.get();
        second = two.get();
        std::vector<PageHost::Entry> entries;
        entries.push_back({.command = 461, .caption = "One", .page = std::move(one)});
        entries.push_back({.command = 462, .caption = "Two", .page = std::move(two)});
        ASSERT_TRUE(host.Create(parent, fonts, std::move(entries)));
        host.Place({0, 0, 800, 500});
    }
    ~PageHostTest() override { ::DestroyWindow(parent); }
    [[nodiscard]] bool IsPressed(int command) const { return ::IsDlgButtonChecked(parent, command) == BST_CHECKED; }
};

TEST_F(PageHostTest, ShowsOnePageAtATime) {
    EXPECT_EQ(host.Current(), nullptr);
    EXPECT_TRUE(host.Open(461));
    EXPECT_TRUE(host.Open(462));
    EXPECT_EQ(host.Current(), second);
    EXPECT_FALSE(::IsWindowVisible(first->Window()));
    EXPECT_TRUE(::IsWindowVisible(second->Window()));
    EXPECT_FALSE(IsPressed(461));
    EXPECT_TRUE(IsPressed(462));
    // Opening it again changes nothing, and neither does a command of somebody else.
    EXPECT_TRUE(host.Open(462));
    EXPECT_FALSE(host.Open(376));
    EXPECT_EQ(host.Current(), second);
    EXPECT_EQ(second->shown, 1);
    EXPECT_EQ(first->hidden, 1);
}

TEST_F(PageHostTest, ButtonsAreRealControlsWithTheirCaptions) {
    const HWND button = ::GetDlgItem(parent, 462);
    EXPECT_EQ(TextOfWindow(button), "Two");
    EXPECT_NE(::GetWindowLongPtrA(button, GWL_STYLE) & WS_TABSTOP, 0);
    RECT place{};
    ::GetWindowRect(button, &place);
    EXPECT_LE(place.right, Scale(PageHost::kColumnWidth));
}

TEST_F(PageHostTest, TakesTheKeyboardAlongFromAPageThatIsHidden) {
    (void)host.Open(461);
    const HWND inside = CreateControl(first->Window(), "EDIT", "", 0, 1, fonts.Text());
    const HWND elsewhere = CreateControl(parent, "EDIT", "", 0, 2, fonts.Text());
    ::SetFocus(inside);
    ASSERT_EQ(::GetFocus(), inside);
    (void)host.Open(462);
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(parent, 462));
    (void)host.Open(461);
    EXPECT_EQ(::GetFocus(), ::GetDlgItem(parent, 461));
    ::SetFocus(elsewhere);
    (void)host.Open(462);
    EXPECT_EQ(::GetFocus(), elsewhere);
}

TEST_F(PageHostTest, AllPagesHearOfNewRules) {
    host.OnRulesChanged();
    EXPECT_EQ(first->rulesChanged, 1);
    EXPECT_EQ(second->rulesChanged, 1);
}

}  // namespace
}  // namespace brennvar
