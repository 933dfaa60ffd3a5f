// What a window holds of the system's objects goes with it: each kind is opened, painted and closed many times.
#include <gtest/gtest.h>

#include "app/AboutDialog_win.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/GradientStatic_win.h"
#include "controls/GroupBox_win.h"
#include "controls/Label_win.h"
#include "controls/ProgressBar_win.h"
#include "controls/RadioButton_win.h"
#include "dialogs/MessageDialog_win.h"
#include "support/ControlWindow.h"
#include "support/ModalOwner_win.h"
#include "support/ObjectCounts_win.h"
#include "tree/Tree_win.h"
#include "ui/Balloon_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {
namespace {

class LeftBehindTest : public testing::Test {
protected:
    // The key reaches the modal window that opens next.
    void PressInNext(WPARAM key) {
        owner.Post([] { ::UpdateWindow(::GetActiveWindow()); });
        owner.PostKey(key);
    }

    const CFonts fonts;
    const Language language{nullptr};
    const test::TestSkin skin;
    const test::ControlWindow window;
    test::ModalOwner owner;
};

// Without the address box: Wine's own class loses an object with each of its windows, skinned or not.
TEST_F(LeftBehindTest, NothingByControls) {
    const std::string strip = test::StripFile({1, 2, 3, 4, 5, 6}, 12, 12);
    for (const char* file : {"button.png", "check_button.png", "radio_button.png"}) skin.Write(file, strip);
    const HWND parent = window.Window();
    test::ExpectNothingLeftBy([&] {
        const Look look = skin.MakeLook();
        CButton button;
        CCheckBox check;
        CRadioButton radio;
        CEdit edit;
        CComboBox combo;
        CGroupBox group;
        CProgressBar bar;
        CGradientStatic heading;
        CLabel label;
        button.Create(parent, kButton, "Text", 1, look);
        check.Create(parent, "Text", 2, look);
        radio.Create(parent, "Text", RadioPlace::FirstOfGroup, 3, look);
        edit.Create(parent, "Text", 0, 4, look);
        combo.Create(parent, 5, look);
        group.Create(parent, "Text", 7, look);
        bar.Create(parent, 8, look);
        heading.Create(parent, "Text", 9, look);
        label.Create(parent, "Text", LabelKind::Plain, SS_LEFT, 10, look);
        LONG top = 0;
        for (const CControl* control : std::initializer_list<CControl*>{&button, &check, &radio, &edit, &combo,
                                                                        &group, &bar, &heading, &label}) {
            control->Place({0, top, 100, top + 24});
            ::UpdateWindow(control->Window());
            EndWindow(control->Window());
            EXPECT_EQ(control->Window(), nullptr);
            top += 24;
        }
    });
}

class OneRow final : public TreeRows {
    [[nodiscard]] int RowCount() const override { return 1; }
    [[nodiscard]] TreeCell Cell(int, int column) const override {
        TreeCell cell;
        cell.text = std::string(100, 'x');
        if (column == 1) cell.checked = false;
        return cell;
    }
};

TEST_F(LeftBehindTest, NothingByListsAndTheirTips) {
    for (const char* file : {"scrollbar_up.png", "scrollbar_slider2.png", "check_button_list.png"}) {
        skin.Write(file, test::StripFile({1, 2, 3, 4, 5, 6}, 16, 16));
    }
    const Look look = skin.MakeLook();
    OneRow rows;
    test::ExpectNothingLeftBy([&] {
        CTree tree;
        const TreeColumn columns[] = {{.title = "One", .width = 500}, {.title = "Two", .width = 100}};
        ASSERT_TRUE(tree.Create({.parent = window.Window(), .id = 1}, look, columns, rows));
        tree.Place({0, 0, 300, 200});
        ::UpdateWindow(tree.Window());
        ::SendMessageA(tree.Window(), WM_MOUSEMOVE, 0, MAKELPARAM(100, TreePainter::HeaderHeight() + 10));
        ::SendMessageA(tree.Window(), WM_TIMER, 2, 0);
        EXPECT_TRUE(::IsWindowVisible(::FindWindowA("BrennvarTip", nullptr)));
        EndWindow(tree.Window());
    });
}

TEST_F(LeftBehindTest, NothingByBalloonsMenusAndDialogs) {
    const Look look = skin.MakeLook();
    CPopupMenu menu;
    menu.Add(1, "&Open", MenuImage::Copy);
    test::ExpectNothingLeftBy([&] {
        CBalloon balloon(fonts);
        EXPECT_TRUE(balloon.Show({"Title", "Text", "More"}, {300, 300, 320, 320}));
        ::UpdateWindow(balloon.Window());
    });
    test::ExpectNothingLeftBy([&] {
        ::PostMessageA(owner.Window(), WM_KEYDOWN, 'O', 0);
        EXPECT_EQ(menu.Track(owner.Window(), {200, 200}, TPM_RETURNCMD, look, nullptr), 1);
    });
    test::ExpectNothingLeftBy([&] {
        PressInNext(VK_ESCAPE);
        EXPECT_FALSE(MessageDialog(fonts, {.caption = "Caption", .message = "M", .ok = "OK", .cancel = "Cancel"})
                         .Ask(owner.Window()));
    });
    test::ExpectNothingLeftBy([&] {
        PressInNext(VK_RETURN);
        AboutDialog(fonts, language).Show(owner.Window());
    });
}

}  // namespace
}  // namespace brennvar
