#include "ui/PopupMenu_win.h"

#include <gtest/gtest.h>

#include "support/ModalOwner_win.h"

namespace brennvar {
namespace {

TEST(CPopupMenuTest, IsChosenFromWithTheKeyboard) {
    const CFonts fonts;
    const Look look(fonts);
    const test::ModalOwner owner;
    CPopupMenu timed, menu;
    timed.Add(21, "First");
    menu.Add(1, "&Open");
    menu.Add(2, "&Disabled", MenuImage::Copy, {.isDisabled = true});
    menu.AddSubMenu(std::move(timed), "&Block && wait", MenuImage::None, {.isChecked = true});
    menu.Add(5, "ordinary");  // O is the mnemonic of another one
    menu.Add(6, "normal");
    const auto choose = [&](std::initializer_list<WPARAM> keys) {
        // A menu may have closed before it took all of the last keys.
        MSG message;
        while (::PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        }
        for (const WPARAM key : keys) ::PostMessageA(owner.Window(), WM_KEYDOWN, key, 0);
        return menu.Track(owner.Window(), {200, 200}, TPM_RETURNCMD, look, nullptr);
    };
    EXPECT_EQ(choose({'O'}), 1);
    EXPECT_EQ(choose({'N'}), 6) << "has no mnemonic";
    EXPECT_EQ(choose({'B', VK_RETURN}), 21) << "opens the sub-menu";
    EXPECT_EQ(choose({'D', VK_ESCAPE}), 0) << "disabled: nothing is chosen";
}

}  // namespace
}  // namespace brennvar
