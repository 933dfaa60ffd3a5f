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
    struct Row {
        std::initializer_list<WPARAM> keys;
        int expected;
    };
    const Row rows[] = {
        {{'O'}, 1},
        {{'N'}, 6},              // has no mnemonic
        {{'B', VK_RETURN}, 21},  // opens the sub-menu
        {{'D', VK_ESCAPE}, 0},   // disabled: nothing is chosen
        {{VK_UP, VK_RETURN}, 6},
    };
    for (const Row& row : rows) {
        // A menu may have closed before it took all of the last keys.
        MSG message;
        while (::PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        }
        for (const WPARAM key : row.keys) ::PostMessageA(owner.Window(), WM_KEYDOWN, key, 0);
        EXPECT_EQ(menu.Track(owner.Window(), {200, 200}, TPM_RETURNCMD, look, nullptr), row.expected)
            << "first key " << *row.keys.begin();
    }
}

}  // namespace
}  // namespace brennvar
