#include "controls/Button_win.h"

#include <gtest/gtest.h>

#include "controls/Edit_win.h"
#include "support/ControlWindow.h"

namespace brennvar {
namespace {

constexpr COLORREF kRest = RGB(10, 20, 30), kHot = RGB(40, 50, 60), kPressed = RGB(70, 80, 90);

TEST(CButtonTest, TakesSizeAndStatesFromAPictureThatCanBeUsed) {
    const test::TestSkin skin;
    test::ControlWindow window;
    const SIZE plain{Scale(kButton.plainSize.cx), Scale(kButton.plainSize.cy)};
    struct Row {
        unsigned frameWidth, height;
        bool isUsed;
    };
    const Row rows[] = {{1, 1, false}, {7, 20, false}, {80, 7, false}, {8, 8, true}, {80, 255, false}};
    for (const Row& row : rows) {
        skin.Write("button.png", test::StripFile({kRest, kHot, kPressed}, row.frameWidth, row.height));
        CButton button;
        button.Create(window.Window(), kButton, "", 7, skin.MakeLook());
        EXPECT_EQ(button.Size().cx, row.isUsed ? static_cast<LONG>(row.frameWidth) : plain.cx) << row.height;
        EXPECT_EQ(button.Size().cy, row.isUsed ? static_cast<LONG>(row.height) : plain.cy) << row.frameWidth;
        if (row.isUsed) {
            const HWND control = button.Window();
            EXPECT_EQ(test::Screenshot(control).Count(kRest), 64);
            ::SendMessageA(control, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
            EXPECT_EQ(test::Screenshot(control).Count(kHot), 64);
            ::SendMessageA(control, BM_SETSTATE, TRUE, 0);
            EXPECT_EQ(test::Screenshot(control).Count(kPressed), 64);
        }
        ::DestroyWindow(button.Window());
    }
}

TEST(CButtonTest, MayEndInItsOwnClick) {
    const test::TestSkin skin;
    for (const ButtonKind* kind : {&kButtonDialog, &kButtonClose}) {
        auto window = std::make_unique<test::ControlWindow>();
        auto button = std::make_unique<CButton>();
        button->Create(window->Window(), *kind, "x", 7, skin.MakeLook());
        const HWND control = button->Window(), parent = window->Window();
        window->onCommand = [&] {
            ::DestroyWindow(parent);
            button.reset();
        };
        ::SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        ::SendMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        EXPECT_FALSE(::IsWindow(control));
        EXPECT_EQ(button, nullptr);
    }
}

TEST(CButtonTest, CaptionButtonsGiveTheKeyboardBack) {
    const test::TestSkin skin;
    test::ControlWindow window;
    CEdit edit;
    CButton caption;
    edit.Create(window.Window(), "", 0, 6, skin.MakeLook());
    caption.Create(window.Window(), kButtonHelp, "Help", 7, skin.MakeLook());
    EXPECT_EQ(::GetNextDlgTabItem(window.Window(), edit.Window(), FALSE), edit.Window());
    ::SetFocus(edit.Window());
    ::SendMessageA(caption.Window(), BM_CLICK, 0, 0);
    EXPECT_EQ(window.TakeCount(BN_CLICKED), 1);
    EXPECT_EQ(::GetFocus(), edit.Window());
}

}  // namespace
}  // namespace brennvar
