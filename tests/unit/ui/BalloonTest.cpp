#include "ui/Balloon_win.h"

#include <gtest/gtest.h>

#include "ui/ChildControls_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {

TEST(CBalloonTest, ShowsItsTextsInsideTheWorkAreaWithoutTheFocus) {
    const CFonts fonts;
    const HWND active = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                          ::GetModuleHandleA(nullptr), nullptr);
    ::SetActiveWindow(active);
    CBalloon balloon(fonts);
    balloon.Hide();  // without a window yet
    // A control at the very corner.
    ASSERT_TRUE(balloon.ShowFor(
        active, {"Title", "A text that is long enough for more than one line of the balloon.", ""}));
    const HWND window = balloon.Window();
    EXPECT_TRUE(balloon.IsShown());
    EXPECT_EQ(::GetActiveWindow(), active);
    EXPECT_EQ(::SendMessageA(window, WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);

    // Shown again elsewhere, it is the same window with another text.
    const RECT area = MainWorkArea();
    ASSERT_TRUE(balloon.Show({"", "B", ""}, {area.right, area.bottom, area.right + 20, area.bottom + 20}));
    EXPECT_EQ(TextOfWindow(window), "\nB");
    RECT place{}, both{};
    ::GetWindowRect(window, &place);
    ::UnionRect(&both, &place, &area);
    EXPECT_TRUE(::EqualRect(&both, &area));
    ::DestroyWindow(active);
}

TEST(CBalloonTest, ClosesOnAClickAndInTimeAndOpensItsLink) {
    const CFonts fonts;
    CBalloon balloon(fonts);
    const RECT anchor{300, 300, 320, 320};
    const auto click = [&](LONG x, LONG y) { ::SendMessageA(balloon.Window(), WM_LBUTTONUP, 0, MAKELPARAM(x, y)); };
    int opened = 0;
    const BalloonOptions options{.timeout = std::chrono::milliseconds(60'000), .onLink = [&] { ++opened; }};

    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, options));
    const RECT link = balloon.LinkPlace();
    ASSERT_FALSE(::IsRectEmpty(&link));
    click(link.left - 1, link.top);
    EXPECT_FALSE(balloon.IsShown());
    EXPECT_EQ(opened, 0);
    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, options));
    click(link.left, link.top);
    EXPECT_EQ(opened, 1);
    // The link may show the balloon again.
    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, {.onLink = [&] {
                                 (void)balloon.Show({"Another", "", ""}, anchor);
                             }}));
    click(link.left, link.top);
    EXPECT_TRUE(balloon.IsShown());
    EXPECT_TRUE(::IsRectEmpty(&balloon.LinkPlace()));
    ::SendMessageA(balloon.Window(), WM_TIMER, 99, 0);
    EXPECT_TRUE(balloon.IsShown());
    ::SendMessageA(balloon.Window(), WM_TIMER, 1, 0);
    EXPECT_FALSE(balloon.IsShown());
}

}  // namespace brennvar
