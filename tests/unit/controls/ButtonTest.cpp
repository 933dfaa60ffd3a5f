#include "controls/Button_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"

namespace brennvar {
namespace {

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

}  // namespace
}  // namespace brennvar
