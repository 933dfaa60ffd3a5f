#include "ui/PopupMenu_win.h"

#include <gtest/gtest.h>

#include "support/ModalOwner_win.h"

namespace brennvar {
namespace {

constexpr POINT kPoint{200, 200};

class CPopupMenuTest : public testing::Test {
protected:
    CPopupMenuTest() {
        CPopupMenu timed;
        timed.Add(21, "First");
        timed.Add(22, "Second");
        m_menu.Add(1, "&Open");
        m_menu.AddSeparator();
        m_menu.Add(2, "&Disabled", MenuImage::Copy, {.isDisabled = true});
        m_menu.AddSubMenu(std::move(timed), "&Block && wait", MenuImage::None, {.isChecked = true});
        m_menu.Add(3, "E&xit\tCtrl+X", MenuImage::Exit, {.isDefault = true});
        m_menu.Add(4, "Again &x");
        m_menu.Add(5, "ordinary");  // O is the mnemonic of another one
        m_menu.Add(6, "normal");
    }

    // Presses the keys in the open menu; what it returns then.
    int TrackWith(std::initializer_list<WPARAM> keys) {
        Press(keys);
        return m_menu.Track(m_owner.Window(), kPoint, TPM_RETURNCMD, m_look, nullptr);
    }
    // For the menu that is opened next.
    void Press(std::initializer_list<WPARAM> keys) {
        // A menu may have closed before it took all of the last keys.
        MSG message;
        while (::PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        }
        for (const WPARAM key : keys) ::PostMessageA(m_owner.Window(), WM_KEYDOWN, key, 0);
    }

    CFonts m_fonts;
    Look m_look{m_fonts};
    test::ModalOwner m_owner;
    CPopupMenu m_menu;
};

TEST_F(CPopupMenuTest, IsChosenFromWithTheKeyboard) {
    struct Row {
        std::initializer_list<WPARAM> keys;
        int expected;
    };
    const Row rows[] = {
        {{VK_DOWN, VK_RETURN}, 1},
        {{VK_UP, VK_UP, VK_UP, VK_UP, VK_RETURN}, 3},
        {{VK_DOWN, VK_ESCAPE}, 0},
        {{VK_DOWN, VK_DOWN, VK_RETURN, VK_ESCAPE}, 0},  // disabled: nothing is chosen
        {{'O'}, 1},
        {{'N'}, 6},  // has no mnemonic
        {{'D', VK_ESCAPE}, 0},
        {{'B', VK_RETURN}, 21},  // opens the sub-menu
        {{VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN}, 22},
        {{'Q', VK_ESCAPE}, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TrackWith(row.keys), row.expected) << "first key " << *row.keys.begin();
    }
    EXPECT_EQ(::SendMessageA(m_owner.Window(), WM_MENUCHAR, 'O', 0), 0) << "the owner is its own again";
}

TEST_F(CPopupMenuTest, LeavesAMessageBehindItselfAtTheTray) {
    Press({VK_DOWN, VK_RETURN});
    EXPECT_EQ(m_menu.TrackAtTray(m_owner.Window(), kPoint, TPM_RETURNCMD, m_look, nullptr), 1);
    // Without it the next menu there closes at once.
    bool hasMessage = false;
    MSG message{};
    while (::PeekMessageA(&message, m_owner.Window(), 0, 0, PM_REMOVE | PM_QS_POSTMESSAGE)) {
        hasMessage = hasMessage || message.message == WM_NULL;
    }
    EXPECT_TRUE(hasMessage);
}

}  // namespace
}  // namespace brennvar
