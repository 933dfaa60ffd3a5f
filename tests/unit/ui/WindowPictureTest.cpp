#include "ui/WindowPicture_win.h"

#include <gtest/gtest.h>

#include <vector>

#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/GroupBox_win.h"
#include "controls/Label_win.h"
#include "controls/ListBox_win.h"
#include "controls/ScrollPanel_win.h"
#include "controls/SelectableText_win.h"
#include "support/ControlWindow.h"
#include "support/NoGdiObjects_win.h"

namespace brennvar {
namespace {

// Scrolled by half of what it holds, so that part of the label is cut.
class TestPanel final : public CScrollPanel {
public:
    using CScrollPanel::CScrollPanel;

private:
    bool OnCreate() override {
        m_label.Create(Window(), "Within", LabelKind::Bold, 0, 1, GetLook());
        return true;
    }
    int OnPlaceContent(int width, int top) override {
        m_label.Place({10, top + 10, width, top + 200});
        return 400;
    }
    CLabel m_label;
};

// Every kind of window that has a way of its own to paint, none of which has anything left to be painted.
class WindowPictureTest : public testing::Test {
protected:
    void SetUp() override {
        const HWND parent = window.Window();
        box.Create(parent, "Group", 1, look);  // lies above what is in it
        box.Place({10, 10, 230, 90});
        label.Create(parent, "Label", LabelKind::Quiet, SS_ENDELLIPSIS, 2, look);
        label.Place({20, 30, 120, 50});
        check.Create(parent, "Check", 3, look);
        check.Place({20, 50, 200, 80});
        cue.Create(parent, "", 0, 4, look);
        cue.SetCue("Search");
        cue.Place({10, 100, 230, 124});
        line.Create(parent, "one line", 0, 5, look);
        line.Place({10, 130, 230, 154});
        lines.Create(parent, "1\r\n2\r\n3\r\n4\r\n5\r\n6", ES_MULTILINE | WS_VSCROLL, 6, look);
        lines.Place({10, 160, 230, 220});
        list.Create(parent, 7, look);
        for (const char* item : {"first", "second", "third", "fourth"}) list.Add(item);
        list.Select(1);
        list.Place({240, 10, 460, 80});
        combo.Create(parent, 8, look);
        combo.Add("chosen");
        combo.Select(0);
        combo.Place({240, 100, 460, 300});
        text.Create(parent, 9, look);
        text.SetColours(RGB(255, 255, 255), RGB(0, 128, 0));
        ASSERT_TRUE(text.Show("in a pill"));
        text.Place({240, 140, 400, 160});
        ASSERT_TRUE(panel.CreatePanel(parent, 10));
        panel.Place({240, 170, 460, 290});
        ::ShowWindow(panel.Window(), SW_SHOWNA);
        hidden.Create(parent, "Hidden", LabelKind::Bold, 0, 11, look);
        hidden.Place({10, 230, 230, 260});
        ::ShowWindow(hidden.Window(), SW_HIDE);
        m_parts = {{"box", box.Window()},     {"label", label.Window()}, {"check", check.Window()},
                   {"cue", cue.Window()},     {"line", line.Window()},   {"lines", lines.Window()},
                   {"list", list.Window()},   {"combo", combo.Window()}, {"text", text.Window()},
                   {"panel", panel.Window()}, {"window", parent}};
    }
    void Spoil() const {
        const HDC dc = ::GetDCEx(window.Window(), nullptr, DCX_CACHE);
        FillSolid(dc, window.ClientRect(), RGB(255, 0, 0));
        ::ReleaseDC(window.Window(), dc);
    }
    struct Named {
        const char* name;
        HWND window;
    };
    // What each of them shows, as the screen has it.
    [[nodiscard]] std::vector<test::Screenshot> Screenshots() const {
        ::RedrawWindow(window.Window(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        std::vector<test::Screenshot> shots;
        for (const Named& part : m_parts) shots.emplace_back(part.window);
        return shots;
    }
    void ExpectLook(const std::vector<test::Screenshot>& painted) const {
        for (std::size_t part = 0; part < m_parts.size(); ++part) {
            EXPECT_TRUE(test::Screenshot(m_parts[part].window) == painted[part]) << m_parts[part].name;
        }
    }
    [[nodiscard]] int LeftToPaint() const {
        int count = ::GetUpdateRect(window.Window(), nullptr, FALSE) ? 1 : 0;
        const WNDENUMPROC look = [](HWND child, LPARAM sum) -> BOOL {
            if (::GetUpdateRect(child, nullptr, FALSE)) ++*reinterpret_cast<int*>(sum);
            return TRUE;
        };
        ::EnumChildWindows(window.Window(), look, reinterpret_cast<LPARAM>(&count));
        return count;
    }

    test::TestSkin skin;
    const Look look = skin.MakeLook();
    test::ControlWindow window;
    CGroupBox box;
    CLabel label, hidden;
    CCheckBox check;
    CEdit cue, line, lines;
    CListBox list;
    CComboBox combo;
    CSelectableText text;
    TestPanel panel{look};
    std::vector<Named> m_parts;
};

TEST_F(WindowPictureTest, IsWhatTheWindowsPaintOneByOneAndLeavesNothingToBePainted) {
    const auto painted = Screenshots();
    Spoil();
    EXPECT_FALSE(test::Screenshot(window.Window()) == painted.back());
    ::RedrawWindow(window.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    EXPECT_GT(LeftToPaint(), 10);
    EXPECT_TRUE(PaintAsOnePicture(window.Window()));
    EXPECT_EQ(LeftToPaint(), 0);
    ExpectLook(painted);
}

TEST_F(WindowPictureTest, WithoutABitmapWindowsPaintsInItsOwnWay) {
    const auto painted = Screenshots();
    constexpr std::size_t kDcOnly = 1;
    ::RedrawWindow(window.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    const int before = LeftToPaint();
    {
        const test::NoGdiObjects scarce(kDcOnly);
        ASSERT_TRUE(scarce.HasReachedTheEnd());
        EXPECT_FALSE(PaintAsOnePicture(window.Window()));
    }
    // What is painted at once inside WM_PAINT comes back to the same WM_PAINT for ever.
    EXPECT_EQ(LeftToPaint(), before);
    // Nor is there an end to painting at once where not even a DC is left: it is painted when there are some again.
    for (const std::size_t left : {kDcOnly, std::size_t{0}}) {
        Spoil();
        {
            const test::NoGdiObjects scarce(left);
            ShowAsOnePicture(window.Window(), window.ClientRect());
        }
        ::RedrawWindow(window.Window(), nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        ExpectLook(painted);
        EXPECT_EQ(LeftToPaint(), 0);
    }
}

}  // namespace
}  // namespace brennvar
