#include "ui/Control_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"
// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "controls/CheckBox_win.h"
#include "controls/ProgressBar_win.h"

namespace brennvar {
namespace {

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
