#include "controls/DrawnText_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "support/ControlWindow.h"
#include "support/DrawnTexts_win.h"
#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

constexpr RECT kPlace{10, 20, 110, 60};

// A window with texts that it draws.
class Sheet final : public CWindow {
public:
    DrawnTexts texts{DrawnTexts::PaintedIn::Paint};

    Sheet() {
        (void)Create({.parent = nullptr, .text = "", .style = WS_POPUP | WS_VISIBLE, .place = {0, 0, 200, 100}});
        texts.SetWindow(Window());
    }

private:
    void OnPaint(HDC dc, const RECT& invalid) override {
        FillSolid(dc, invalid, test::ControlWindow::kGround);
        texts.Paint(dc);
    }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_ERASEBKGND) {
            FillSolid(reinterpret_cast<HDC>(wParam), ClientRect(), test::ControlWindow::kGround);
            return TRUE;
        }
        return texts.Answer(message, wParam, lParam);
    }
};

class DrawnTextTest : public testing::Test {
protected:
    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    Sheet sheet;
};

TEST_F(DrawnTextTest, LooksLikeALabel) {
    struct Row {
        LabelKind kind;
        DWORD style;
        const char* text;
    };
    const Row rows[] = {
        {LabelKind::Plain, SS_LEFT, "A text & more, in several lines"},
        {LabelKind::Quiet, SS_RIGHT | SS_ENDELLIPSIS, "A text that is too long for its place"},
        {LabelKind::Bold, SS_CENTER, "A heading"},
        {LabelKind::Title, SS_LEFT | SS_CENTERIMAGE, "A title"},
        {LabelKind::Plain, SS_LEFTNOWORDWRAP, "One line that is not broken anywhere"},
    };
    const test::Screenshot empty(sheet.Window());
    for (const Row& row : rows) {
        CLabel label;
        label.Create(sheet.Window(), row.text, row.kind, row.style | SS_NOPREFIX, 1, look);
        label.Place(kPlace);
        const SIZE measured = label.Measure(80);
        const test::Screenshot expected(sheet.Window());
        EndWindow(label.Window());
        CDrawnText drawn;
        drawn.Create(sheet.texts, row.text, row.kind, row.style, 1, look);
        drawn.Place(kPlace);
        sheet.Repaint();
        EXPECT_TRUE(test::Screenshot(sheet.Window()) == expected) << row.text;
        EXPECT_FALSE(expected == empty) << row.text;
        EXPECT_EQ(drawn.Measure(80).cx, measured.cx) << row.text;
        EXPECT_EQ(drawn.Measure(80).cy, measured.cy) << row.text;
    }
    sheet.Repaint();
    EXPECT_TRUE(test::Screenshot(sheet.Window()) == empty) << "a text goes with its object";
}

TEST_F(DrawnTextTest, PaintsWhereSomethingHasChangedAndNowhereElse) {
    constexpr RECT kNothing{};
    constexpr RECT kOther{120, 0, 160, 30};
    CDrawnText text;
    text.Create(sheet.texts, "text", LabelKind::Plain, SS_LEFT, 1, look);
    text.Place(kPlace);
    struct Row {
        std::function<void()> step;
        RECT expected;
    };
    const Row rows[] = {
        {[&] { text.SetText("text"); }, kNothing},
        {[&] { text.SetText("other"); }, kPlace},
        {[&] { text.SetColour(look.colours.text); }, kNothing},
        {[&] { text.SetColour(look.colours.warning); }, kPlace},
        {[&] { text.Place(kPlace); }, kNothing},
        {[&] { text.SetShown(false); }, kPlace},
        {[&] { text.SetText("text"); }, kNothing},
        {[&] { text.SetShown(true); }, kPlace},
        {[&] { text.Place(kOther); }, {kPlace.left, kOther.top, kOther.right, kPlace.bottom}},
    };
    for (const Row& row : rows) {
        ::ValidateRect(sheet.Window(), nullptr);
        row.step();
        RECT invalid{};
        ::GetUpdateRect(sheet.Window(), &invalid, FALSE);
        EXPECT_TRUE(::EqualRect(&invalid, &row.expected)) << "row " << &row - rows;
    }
}

TEST_F(DrawnTextTest, IsReadByItsNumber) {
    CDrawnText text;
    CDrawnText unnumbered;
    text.Create(sheet.texts, "", LabelKind::Plain, SS_LEFT, 7, look);
    unnumbered.Create(sheet.texts, "unnumbered", LabelKind::Plain, SS_LEFT, -1, look);
    for (const char* content : {"", "abc", "abcd", "abcde", "\xC4\xFF\x80\x7F\x01"}) {
        text.SetText(content);
        EXPECT_EQ(test::DrawnText(sheet.Window(), 7), content);
    }
    for (const int id : {6, -1}) EXPECT_EQ(test::DrawnText(sheet.Window(), id), std::nullopt);
    // The second piece, what lies behind the end, and what no text is long enough for.
    const auto ask = [&](LPARAM before) { return ::SendMessageA(sheet.Window(), kDrawnTextQuery, 7, before); };
    text.SetText("abcdefg");
    EXPECT_EQ(ask(4), 0x1'0067'6665);
    for (const LPARAM before : {LPARAM{7}, LPARAM{1000}, LPARAM{-1}, LPARAM{-3}})
        EXPECT_EQ(ask(before), 0x1'0000'0000);
}

}  // namespace
}  // namespace brennvar
