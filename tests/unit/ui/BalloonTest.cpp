#include "ui/Balloon_win.h"

#include <gtest/gtest.h>

#include "ui/OwnMessages_win.h"

namespace brennvar {

TEST(CBalloonTest, ClosesOnAClickAndInTimeAndOpensItsLink) {
    const CFonts fonts;
    CBalloon balloon(fonts);
    balloon.Hide();  // without a window yet
    const RECT anchor{300, 300, 320, 320};
    const auto click = [&](LONG x, LONG y) { ::SendMessageA(balloon.Window(), WM_LBUTTONUP, 0, MAKELPARAM(x, y)); };
    int opened = 0;
    const BalloonOptions options{.timeout = std::chrono::milliseconds(60'000), .onLink = [&] { ++opened; }};

    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, options));
    const RECT link = balloon.LinkPlace();
    click(link.left - 1, link.top);
    EXPECT_FALSE(balloon.IsShown());
    EXPECT_EQ(opened, 0);
    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, options));
    click(link.left, link.top);
    EXPECT_EQ(opened, 1);
    // The link may show the balloon again, which then ends by its timer.
    ASSERT_TRUE(balloon.Show({"Title", "Text", "More"}, anchor, {.onLink = [&] {
                                 (void)balloon.Show({"Another", "", ""}, anchor);
                             }}));
    click(link.left, link.top);
    EXPECT_TRUE(balloon.IsShown());
    ::SendMessageA(balloon.Window(), WM_TIMER, 1, 0);
    EXPECT_FALSE(balloon.IsShown());
}

TEST(CBalloonTest, KeepsTheCrossAndTheTimeBesideTheFirstText) {
    const CFonts fonts;
    const RECT anchor{300, 300, 320, 320};
    const std::string longText(200, 'x');
    const struct {
        BalloonTexts texts;
        bool hasTime;
    } rows[] = {{{"Title", "Text", "", "14:28"}, true},
                {{longText, longText, "", "14:28"}, true},
                {{"", longText, "", "14:28"}, false},
                {{"", "x", "", ""}, false}};
    for (const auto& row : rows) {
        CBalloon balloon(fonts);
        ASSERT_TRUE(balloon.Show(row.texts, anchor));
        RECT body = balloon.ClientRect();
        const RECT cross = balloon.CrossPlace();
        RECT common{};
        EXPECT_TRUE(::IntersectRect(&common, &body, &cross) && ::EqualRect(&common, &cross));
        EXPECT_EQ(body.right - cross.right, cross.top) << "as far from the right as from the top";
        EXPECT_EQ(::IsRectEmpty(&balloon.TimePlace()) == FALSE, row.hasTime);
        EXPECT_LT(balloon.TimePlace().right, cross.left);
    }
}

TEST(CBalloonTest, EscClosesTheLastOneOfItsWindowOnly) {
    const CFonts fonts;
    const auto makeWindow = [](HWND parent) {
        return ::CreateWindowExA(0, "STATIC", "", parent ? WS_CHILD : WS_POPUP, 0, 0, 9, 9, parent, nullptr,
                                 nullptr, nullptr);
    };
    const HWND window = makeWindow(nullptr);
    const HWND child = makeWindow(window);
    const HWND other = makeWindow(nullptr);
    const auto press = [](HWND where, WPARAM key = VK_ESCAPE) {
        MSG message{};
        message.hwnd = where;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        return CBalloon::CloseByKey(message);
    };
    const RECT anchor{300, 300, 320, 320};
    EXPECT_FALSE(press(window)) << "none is shown";
    CBalloon first(fonts);
    CBalloon second(fonts);
    ASSERT_TRUE(first.Show({"", "first", ""}, anchor, {.keyboard = child}));
    ASSERT_TRUE(second.Show({"", "second", ""}, anchor, {.keyboard = window}));
    EXPECT_FALSE(press(other));
    EXPECT_FALSE(press(window, VK_RETURN));
    EXPECT_TRUE(first.IsShown() && second.IsShown());
    EXPECT_TRUE(press(child));
    EXPECT_TRUE(first.IsShown() && !second.IsShown());
    EXPECT_TRUE(press(window));
    EXPECT_FALSE(first.IsShown());
    EXPECT_FALSE(press(window)) << "the key is for somebody else";
    {
        CBalloon gone(fonts);
        ASSERT_TRUE(gone.Show({"", "gone", ""}, anchor));  // without a keyboard: by its own window only
        EXPECT_FALSE(press(nullptr));
        EXPECT_TRUE(press(gone.Window()));
    }
    EXPECT_FALSE(press(window));
    for (const HWND made : {window, other}) EndWindow(made);
}

}  // namespace brennvar
