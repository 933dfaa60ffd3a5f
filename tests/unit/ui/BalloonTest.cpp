#include "ui/Balloon_win.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(CBalloonTest, ClosesOnAClickAndInTimeAndOpensItsLink) {
    const CFonts fonts;
    CBalloon balloon(fonts);
    balloon.Hide();  // without a window yet
    const RECT anchor{300, 300, 320, 320};
    const auto click = [&](LONG x, LONG y) { ::SendMessageA(balloon.Window(), WM_LBUTTONUP, 0, MAKELPARAM(x, y)); };
    int opened = 0;
    // The link may show the balloon again, which then ends by its timer.
    const BalloonOptions options{.onLink = [&] { opened += balloon.Show({"Another", "", ""}, anchor) ? 1 : 0; }};
    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, options));
    const RECT link = balloon.LinkPlace();
    click(link.left - 1, link.top);
    EXPECT_FALSE(balloon.IsShown());
    EXPECT_EQ(opened, 0);
    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, options));
    click(link.left, link.top);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(balloon.IsShown());
    ::SendMessageA(balloon.Window(), WM_TIMER, 1, 0);
    EXPECT_FALSE(balloon.IsShown());
}

}  // namespace brennvar
