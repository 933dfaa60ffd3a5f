#include "ui/Toggle.h"

#include <gtest/gtest.h>

#include <array>

#include "support/ControlWindow.h"
#include "ui/CheckBox.h"
#include "ui/RadioButton.h"

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

TEST(CToggleTest, ChecksOnSpaceAndClickAndStaysHiddenMeanwhile) {
    const test::TestSkin skin;
    test::ControlWindow window;
    CCheckBox box;
    box.Create(window.Window(), "&Text", 7, skin.MakeLook());
    box.Place({0, 0, 100, 20});
    const HWND control = box.Window();
    ::SendMessageA(control, WM_KEYDOWN, VK_SPACE, 0);
    ::SendMessageA(control, WM_KEYUP, VK_SPACE, 0);
    EXPECT_TRUE(box.IsChecked());
    EXPECT_EQ(window.TakeCount(BN_CLICKED), 1);
    ::ShowWindow(control, SW_HIDE);
    ::SendMessageA(control, BM_CLICK, 0, 0);
    EXPECT_FALSE(box.IsChecked());
    box.SetText("Other");
    ::EnableWindow(control, FALSE);
    EXPECT_FALSE(::IsWindowVisible(control));
    ::ShowWindow(control, SW_SHOW);
    EXPECT_EQ(::SendMessageA(control, BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST(CToggleTest, ArrowsMoveWithinARadioGroup) {
    const test::TestSkin skin;
    test::ControlWindow window;
    std::array<CRadioButton, 4> radios;
    for (std::size_t i = 0; i < radios.size(); ++i) {
        // Two groups of two.
        radios[i].Create(window.Window(), "Radio", i % 2 == 0 ? RadioPlace::FirstOfGroup : RadioPlace::Further,
                         static_cast<int>(i), skin.MakeLook());
        radios[i].Place({0, static_cast<LONG>(20 * i), 100, static_cast<LONG>(20 * i) + 20});
    }
    radios[0].SetChecked(true);
    radios[3].SetChecked(true);
    ::SetFocus(radios[0].Window());
    window.Press(VK_DOWN);
    EXPECT_EQ(::GetFocus(), radios[1].Window());
    EXPECT_FALSE(radios[0].IsChecked());
    EXPECT_TRUE(radios[1].IsChecked());
    window.Press(VK_DOWN);
    EXPECT_TRUE(radios[0].IsChecked()) << "the group is a ring";
    EXPECT_FALSE(radios[1].IsChecked());
    EXPECT_TRUE(radios[3].IsChecked()) << "the other group is left alone";
}

TEST(CToggleTest, BreaksLongTextsAndAlignsThePictureWithTheFirstLine) {
    const test::TestSkin skin;
    test::ControlWindow window;
    CCheckBox box;
    box.Create(window.Window(), "Several words that do not fit into one line", 7, skin.MakeLook());
    const int one = box.HeightAt(400), several = box.HeightAt(120);
    EXPECT_GT(several, 2 * one);
    box.Place({0, 0, 120, several});
    const test::Screenshot shot(box.Window());
    const COLORREF frame = Palette().frame1;
    const auto rowHas = [&](int y) { return shot.At(Scale(8), y) == frame; };
    int top = 0;
    while (top < several && !rowHas(top)) ++top;
    EXPECT_LT(top, one / 2);
}

}  // namespace
}  // namespace brennvar
