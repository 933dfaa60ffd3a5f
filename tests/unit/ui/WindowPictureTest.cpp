#include "ui/WindowPicture_win.h"

#include <gtest/gtest.h>

#include <vector>

#include "controls/CheckBox_win.h"
#include "controls/Edit_win.h"
#include "controls/GroupBox_win.h"
#include "controls/Label_win.h"
#include "support/ControlWindow.h"
#include "support/NoGdiObjects_win.h"

namespace brennvar {

// That every control looks in a picture as it paints itself is seen on the pages of the finished program.
TEST(WindowPictureTest, LeavesNothingToBePaintedAndNothingUnpaintedWithoutABitmap) {
    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    const test::ControlWindow window;
    CGroupBox box;
    CLabel label, hidden;
    CCheckBox check;
    CEdit lines;
    box.Create(window.Window(), "Group", 1, look);  // lies above what is in it
    box.Place({10, 10, 230, 90});
    label.Create(window.Window(), "Label", LabelKind::Quiet, SS_ENDELLIPSIS, 2, look);
    label.Place({20, 30, 120, 50});
    check.Create(window.Window(), "Check", 3, look);
    check.Place({20, 50, 200, 80});
    lines.Create(window.Window(), "1\r\n2\r\n3\r\n4\r\n5\r\n6", ES_MULTILINE | WS_VSCROLL, 6, look);
    lines.Place({10, 160, 230, 220});
    hidden.Create(window.Window(), "Hidden", LabelKind::Bold, 0, 11, look);
    hidden.Place({10, 230, 230, 260});
    ::ShowWindow(hidden.Window(), SW_HIDE);
    const HWND shown[] = {box.Window(), label.Window(), check.Window(), lines.Window(), window.Window()};
    const auto screenshots = [&] {
        ::RedrawWindow(window.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        std::vector<test::Screenshot> shots;
        for (const HWND one : shown) shots.emplace_back(one);
        return shots;
    };
    const auto leftToPaint = [&] {
        int count = 0;
        for (const HWND one : shown) count += ::GetUpdateRect(one, nullptr, FALSE) ? 1 : 0;
        return count;
    };
    const auto invalidate = [&] {
        ::RedrawWindow(window.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    };
    const std::vector<test::Screenshot> painted = screenshots();
    const auto spoil = [&] {
        const HDC dc = ::GetDCEx(window.Window(), nullptr, DCX_CACHE);
        FillSolid(dc, window.ClientRect(), RGB(255, 0, 0));
        ::ReleaseDC(window.Window(), dc);
        EXPECT_FALSE(test::Screenshot(window.Window()) == painted.back());
    };
    constexpr std::size_t kDcOnly = 1;
    spoil();
    invalidate();
    {
        const test::NoGdiObjects scarce(kDcOnly);
        ASSERT_TRUE(scarce.HasReachedTheEnd());
        EXPECT_FALSE(PaintAsOnePicture(window.Window()));
    }
    // What is painted at once inside WM_PAINT comes back to the same WM_PAINT for ever.
    EXPECT_EQ(leftToPaint(), 5);
    EXPECT_TRUE(PaintAsOnePicture(window.Window()));
    EXPECT_EQ(leftToPaint(), 0);
    EXPECT_TRUE(screenshots() == painted);
    // Nor is there an end to painting at once where not even a DC is left: it is painted when there are some again.
    for (const std::size_t left : {kDcOnly, std::size_t{0}}) {
        spoil();
        {
            const test::NoGdiObjects scarce(left);
            ShowAsOnePicture(window.Window(), window.ClientRect());
        }
        EXPECT_EQ(leftToPaint(), 5) << left;
        EXPECT_TRUE(screenshots() == painted) << left;
    }
}

}  // namespace brennvar
