#include "ui/Toggle.h"

#include <gtest/gtest.h>

#include <array>

#include "support/ControlWindow.h"
#include "ui/CheckBox.h"

namespace brennvar {
namespace {

TEST(CToggleTest, ShowsTheFrameOfItsState) {
    const test::TestSkin skin;
    constexpr std::array<COLORREF, 6> kFrames = {RGB(1, 0, 0), RGB(2, 0, 0), RGB(3, 0, 0),
                                                 RGB(4, 0, 0), RGB(5, 0, 0), RGB(6, 0, 0)};
    skin.Write("check_button.png",
               test::StripFile({kFrames[0], kFrames[1], kFrames[2], kFrames[3], kFrames[4], kFrames[5]}, 10, 10));
    test::ControlWindow window;
    CCheckBox box;
    box.Create(window.Window(), "", 7, skin.MakeLook());
    box.Place({0, 0, 100, 20});
    const HWND control = box.Window();
    for (std::size_t checked = 0; checked < 2; ++checked) {
        box.SetChecked(checked != 0);
        EXPECT_EQ(test::Screenshot(control).Count(kFrames[3 * checked]), 100);
        ::SendMessageA(control, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
        EXPECT_EQ(test::Screenshot(control).Count(kFrames[3 * checked + 1]), 100);
        ::SendMessageA(control, BM_SETSTATE, TRUE, 0);
        EXPECT_EQ(test::Screenshot(control).Count(kFrames[3 * checked + 2]), 100);
        ::SendMessageA(control, BM_SETSTATE, FALSE, 0);
        ::SendMessageA(control, WM_MOUSELEAVE, 0, 0);
    }
    EXPECT_EQ(test::Screenshot(control).At(50, 10), test::ControlWindow::kGround);
}

TEST(CToggleTest, StaysHiddenWhateverChanges) {
    const test::TestSkin skin;
    test::ControlWindow window;
    CCheckBox box;
    box.Create(window.Window(), "&Text", 7, skin.MakeLook());
    box.Place({0, 0, 100, 20});
    ::ShowWindow(box.Window(), SW_HIDE);
    ::SendMessageA(box.Window(), BM_CLICK, 0, 0);
    EXPECT_TRUE(box.IsChecked());
    EXPECT_EQ(window.TakeCount(BN_CLICKED), 1);
    box.SetText("Other");
    ::EnableWindow(box.Window(), FALSE);
    EXPECT_FALSE(::IsWindowVisible(box.Window()));
}

}  // namespace
}  // namespace brennvar
