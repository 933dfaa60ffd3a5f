#include "ui/Control_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"
// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/GradientStatic_win.h"
#include "controls/GroupBox_win.h"
#include "controls/Label_win.h"
#include "controls/ProgressBar_win.h"
#include "controls/RadioButton_win.h"
#include "support/ObjectCounts_win.h"

namespace brennvar {
namespace {

// Without the address box: Wine's own class loses an object with each of its windows, skinned or not.
TEST(CControlTest, LeavesNothingBehind) {
    const test::TestSkin skin;
    const std::string strip = test::StripFile({1, 2, 3, 4, 5, 6}, 12, 12);
    for (const char* file : {"button.png", "check_button.png", "radio_button.png"}) skin.Write(file, strip);
    test::ControlWindow window;
    const HWND parent = window.Window();
    const auto makeAllOnce = [&] {
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
        const CControl* controls[] = {&button, &check, &radio, &edit, &combo, &group, &bar, &heading, &label};
        LONG top = 0;
        for (const CControl* control : controls) {
            control->Place({0, top, 100, top + 24});
            ::UpdateWindow(control->Window());
            top += 24;
        }
        for (const CControl* control : controls) {
            ::DestroyWindow(control->Window());
            EXPECT_EQ(control->Window(), nullptr);
        }
    };
    test::ExpectNothingLeftBy(makeAllOnce);
}

// The bytes of a text mean what the look's character set says, not what the system's code page says.
TEST(CControlTest, DrawsTextsInTheCharacterSetOfTheLanguage) {
    const CFonts cyrillic(RUSSIAN_CHARSET);
    const Look look(cyrillic, Skin(nullptr, ""));
    test::ControlWindow window;
    CLabel label;
    label.Create(window.Window(), "\xC6\xF3", LabelKind::Title, SS_LEFT, 7, look);
    label.Place({0, 0, 60, 30});
    const test::Screenshot shown(label.Window());
    {
        const HDC dc = ::GetDC(label.Window());
        const CSelect select(dc, cyrillic.Title());
        RECT client = label.ClientRect();
        FillSolid(dc, client, test::ControlWindow::kGround);
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, Palette().text);
        ::DrawTextW(dc, L"\u0416\u0443", 2, &client, DT_LEFT);
        ::ReleaseDC(label.Window(), dc);
    }
    EXPECT_TRUE(test::Screenshot(label.Window(), test::Screenshot::When::AtOnce) == shown);
    EXPECT_LT(shown.Count(test::ControlWindow::kGround), 60 * 30);
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

TEST(CProgressBarTest, FillsItsShareOfTheRange) {
    const test::TestSkin skin;
    test::ControlWindow window;
    CProgressBar bar;
    bar.Create(window.Window(), 7, skin.MakeLook());
    bar.Place({0, 0, 104, 14});  // 100 x 10 inside the frame
    struct Row {
        int low, high, position, filled;
    };
    constexpr Row kRows[] = {
        {0, 100, 0, 0}, {0, 100, 35, 35}, {0, 100, 100, 100}, {-50, 50, 0, 50}, {0, 2000000000, 1000000000, 50}};
    for (const Row& row : kRows) {
        ::SendMessageA(bar.Window(), PBM_SETRANGE32, static_cast<WPARAM>(row.low), row.high);
        bar.SetPosition(row.position);
        EXPECT_EQ(test::Screenshot(bar.Window()).Count(Palette().accent), 10 * row.filled) << row.position;
    }
}

}  // namespace
}  // namespace brennvar
