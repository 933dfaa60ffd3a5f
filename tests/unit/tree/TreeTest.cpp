#include "tree/Tree_win.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "support/ControlWindow.h"
#include "tree/TreeMessages_win.h"
#include "tree/VisibleRows.h"
#include "ui/ChildControls_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// Entries 0 to count - 1; in a tree every fourth one is the parent of the three behind it.
class TestRows final : public TreeRows {
public:
    int count = 0;
    bool throws = false;
    bool hasChecks = false;
    std::string longText;
    VisibleRows visible;
    bool isTree = false;
    mutable int oddQuestions = 0;  // about rows that do not exist

    void MakeTree(int entryCount) {
        isTree = true;
        std::vector<int> parents;
        parents.reserve(static_cast<std::size_t>(entryCount));
        for (int entry = 0; entry < entryCount; ++entry) parents.push_back(entry % 4 == 0 ? -1 : entry - entry % 4);
        visible.SetParents(parents);
    }
    [[nodiscard]] int RowCount() const override { return isTree ? visible.RowCount() : count; }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        if (row < 0 || row >= RowCount()) ++oddQuestions;
        if (throws) throw std::runtime_error("no cell");
        const int entry = isTree ? visible.EntryOf(row) : row;
        TreeCell cell;
        cell.text = "r" + std::to_string(entry) + "c" + std::to_string(column);
        if (column == 1 && !longText.empty()) cell.text = longText;
        if (column == 1 && hasChecks) cell.checked = false;
        return cell;
    }
    [[nodiscard]] TreeRow Row(int row) const override {
        if (throws) throw std::runtime_error("no row");
        if (!isTree) return {};
        const int entry = visible.EntryOf(row);
        return {visible.LevelOf(entry), visible.HasChildren(entry), visible.IsExpanded(entry)};
    }
    void SetExpanded(int row, bool isExpanded) override { visible.SetExpanded(visible.EntryOf(row), isExpanded); }
};

class CTreeTest : public testing::Test {
protected:
    test::TestSkin skin;
    const Look look = skin.MakeLook();
    test::ControlWindow window;
    TestRows rows;
    CTree tree;
    int selections = 0;

    void Make(bool selectsMany = true, bool hasLevels = false) {
        const TreeColumn columns[] = {{.title = "One", .width = 120},
                                      {.title = "Two", .width = 100, .minimalWidth = 60, .takesRoom = true},
                                      {.title = "Three", .width = 80, .isNumber = true}};
        tree.events.selectionChanged = [this] { ++selections; };
        ASSERT_TRUE(tree.Create({.parent = window.Window(),
                                 .id = 1,
                                 .selectsMany = selectsMany,
                                 .hasLevels = hasLevels,
                                 .emptyText = "Nothing is here."},
                                look, columns, rows));
        tree.Place({0, 0, 400, 300});
        ::SetFocus(tree.Window());
        ::UpdateWindow(tree.Window());
    }
    void SetCount(int count) {
        rows.count = count;
        tree.Refresh();
        ::UpdateWindow(tree.Window());
    }
    [[nodiscard]] LRESULT Ask(UINT message, int first = 0, int second = 0) const {
        return ::SendMessageA(tree.Window(), message, static_cast<WPARAM>(first), second);
    }
    [[nodiscard]] std::string CellText(int row, int column) const {
        (void)Ask(kTreeQueryCell, row, column);
        return TextOfWindow(tree.Window());
    }
    void Press(UINT key, std::initializer_list<int> held = {}) const {
        BYTE state[256] = {};
        for (const int holding : held) state[holding] = 0x80;
        ::SetKeyboardState(state);
        ::SendMessageA(tree.Window(), WM_KEYDOWN, key, 0);
        BYTE released[256] = {};
        ::SetKeyboardState(released);
    }
    void Mouse(UINT message, LPARAM place, WPARAM keys = 0) const {
        ::SendMessageA(tree.Window(), message, keys, place);
    }
    void Click(LPARAM place) const {
        Mouse(WM_LBUTTONDOWN, place, MK_LBUTTON);
        Mouse(WM_LBUTTONUP, place);
    }
    // The left top corner of a cell, and so many pixels to the right and below.
    [[nodiscard]] LPARAM InCell(int row, int column, int right = 10, int below = 10) const {
        const LRESULT corner = Ask(kTreeGetCellLeftTop, row, column);
        EXPECT_NE(corner, -1) << row;
        return MAKELPARAM(LOWORD(corner) + right, HIWORD(corner) + below);
    }
};

TEST_F(CTreeTest, CopiesSelectedRowsAsLinesOfCells) {
    Make();
    SetCount(1'000'000);
    rows.longText = "a\tb\r\nc";
    RowRanges some;
    some.Add(1, 1);
    some.Add(3, 3);
    tree.SetSelection(some, 3);
    const auto clipboard = [&]() -> std::string {
        if (!::OpenClipboard(window.Window())) return "not open";
        const HANDLE memory = ::GetClipboardData(CF_TEXT);
        const auto* bytes = memory ? static_cast<const char*>(::GlobalLock(memory)) : nullptr;
        std::string text = bytes ? bytes : "";
        if (bytes) ::GlobalUnlock(memory);
        ::CloseClipboard();
        return text;
    };
    Press('C', {VK_CONTROL});
    EXPECT_EQ(clipboard(), "r1c0\ta b  c\tr1c2\r\nr3c0\ta b  c\tr3c2\r\n");
    Press('A', {VK_CONTROL});
    tree.CopySelection();
    const std::string all = clipboard();
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), CTree::kMostCopiedRows);
    tree.SelectRow(-1);
    tree.CopySelection();  // nothing to copy: what is there stays
    EXPECT_EQ(clipboard(), all);
}

TEST_F(CTreeTest, SelectionStaysWithItsEntryWhenParentsClose) {
    rows.MakeTree(40);
    Make(true, true);
    tree.SelectRow(9);
    selections = 0;
    Click(InCell(4, 0, 16, 12));  // its mark
    EXPECT_EQ(Ask(kTreeGetRowCount), 37);
    EXPECT_EQ(tree.SelectedRow(), 6);
    EXPECT_EQ(CellText(6, 0), "r9c0");
    EXPECT_EQ(selections, 0);
    // A selected child goes with its parent's closing, and the owner is told.
    EXPECT_EQ(Ask(kTreeSetExpanded, 5, 0), 1);
    EXPECT_EQ(tree.SelectedRow(), -1);
    EXPECT_EQ(tree.FocusedRow(), 5);
    EXPECT_EQ(selections, 1);
}

TEST_F(CTreeTest, SurvivesRowsThatGoAwayUnseen) {
    Make();
    rows.hasChecks = true;
    SetCount(1000);
    Press(VK_END);
    const LPARAM place = InCell(995, 0);
    const auto check = static_cast<LPARAM>(Ask(kTreeGetCheckPosition, 995, 1));
    Mouse(WM_MOUSEMOVE, check);
    Mouse(WM_LBUTTONDOWN, check);
    rows.count = 3;  // and nobody has told the tree
    Mouse(WM_LBUTTONUP, check);
    Click(place);
    Mouse(WM_LBUTTONDBLCLK, place);
    Mouse(WM_RBUTTONDOWN, place);
    Mouse(WM_MOUSEMOVE, place);
    ::SendMessageA(tree.Window(), WM_TIMER, 2, 0);
    for (const int key : {VK_UP, VK_SPACE, VK_RETURN, VK_NEXT}) Press(static_cast<UINT>(key));
    Press('C', {VK_CONTROL});
    ::RedrawWindow(tree.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    tree.Refresh();
    EXPECT_EQ(Ask(kTreeGetFirstVisibleRow), 0);
    EXPECT_EQ(Ask(kTreeGetFocusedRow), 0);  // the click beside all rows took it away, a key gave it back
    for (const UINT message : {kTreeSelectRow, kTreeFocusRow, kTreeIsRowSelected, kTreeEnsureVisible,
                               kTreeGetCellLeftTop, kTreeGetCheck, kTreeGetExpanded, kTreeQueryCell}) {
        EXPECT_EQ(Ask(message, 3), -1) << message;
        EXPECT_EQ(Ask(message, -2), -1) << message;
    }
    rows.throws = true;
    Click(InCell(1, 0));
    EXPECT_EQ(tree.SelectedRow(), 1);
    ::RedrawWindow(tree.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_FALSE(::GetUpdateRect(tree.Window(), nullptr, FALSE)) << "it would paint for ever";
    EXPECT_EQ(CellText(1, 0), "");
    SetCount(0);
    for (const int key : {VK_UP, VK_DOWN, VK_HOME, VK_END, VK_NEXT, VK_SPACE, VK_LEFT, VK_RIGHT})
        Press(static_cast<UINT>(key));
    Click(place);
    EXPECT_EQ(Ask(kTreeGetFocusedRow), -1);
    EXPECT_EQ(rows.oddQuestions, 0);
}

TEST_F(CTreeTest, ShowsTheLastOfAsManyRowsAsCanBeCounted) {
    Make();
    constexpr int kMost = 2'147'483'647;
    SetCount(kMost);
    Press(VK_END);
    for (const UINT key : {VK_NEXT, VK_DOWN, VK_NEXT}) {
        Press(key);
        EXPECT_EQ(tree.FocusedRow(), kMost - 1) << key;
        EXPECT_EQ(tree.SelectedRow(), kMost - 1) << key;
    }
    EXPECT_EQ(tree.FirstVisibleRow() + Ask(kTreeGetVisibleRowCount), kMost);
    EXPECT_EQ(CellText(kMost - 1, 0), "r2147483646c0");
    const auto groundOfLast = [this] {
        const LPARAM place = InCell(kMost - 1, 0, 1, 2);
        return test::Screenshot(tree.Window()).At(LOWORD(place), HIWORD(place));
    };
    const COLORREF selected = groundOfLast();
    Press(VK_UP);
    EXPECT_NE(groundOfLast(), selected);
    Press('A', {VK_CONTROL});
    EXPECT_EQ(Ask(kTreeGetSelectedCount), kMost);
    EXPECT_EQ(groundOfLast(), selected);
}

TEST_F(CTreeTest, WheelsAndBarsScroll) {
    Make();
    SetCount(1'000'000);
    UINT lines = 0;
    ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    for (int part = 0; part < 4; ++part) {  // parts of a notch add up
        Mouse(WM_MOUSEWHEEL, 0, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA / 4)));
    }
    EXPECT_EQ(tree.FirstVisibleRow(), static_cast<int>(lines));
    tree.ScrollTo(0);
    // The thumb, from the top of the track to below the list.
    const int x = 400 - 2 - CScrollBar::Thickness() / 2;
    const int thumb = 2 + TreePainter::HeaderHeight() + CScrollBar::Thickness() + 5;
    Mouse(WM_LBUTTONDOWN, MAKELPARAM(x, thumb));
    Mouse(WM_MOUSEMOVE, MAKELPARAM(x, thumb + 500));
    EXPECT_EQ(tree.FirstVisibleRow(), 1'000'000 - Ask(kTreeGetVisibleRowCount));
    EXPECT_TRUE(tree.IsAtEnd());
    Mouse(WM_MOUSEMOVE, MAKELPARAM(x, thumb));
    EXPECT_EQ(tree.FirstVisibleRow(), 0);
    Mouse(WM_LBUTTONUP, MAKELPARAM(x, thumb));
    // A held arrow goes on with its timer, and no longer than it is held.
    const LPARAM arrow = MAKELPARAM(x, 300 - 2 - CScrollBar::Thickness() / 2);
    Mouse(WM_LBUTTONDOWN, arrow);
    ::SendMessageA(tree.Window(), WM_TIMER, 1, 0);
    Mouse(WM_LBUTTONUP, arrow);
    ::SendMessageA(tree.Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(tree.FirstVisibleRow(), 2);
    EXPECT_EQ(selections, 0);
}

TEST_F(CTreeTest, ScrolledPicturesAreThoseThatArePaintedAnew) {
    Make();
    rows.hasChecks = true;
    SetCount(5000);
    std::mt19937 random(11);
    const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 60; ++round) {
        switch (number(5)) {
            case 0: tree.ScrollTo(number(5000)); break;
            case 1: tree.ScrollTo(tree.FirstVisibleRow() + number(9) - 4); break;
            case 2: Press(number(2) == 0 ? VK_DOWN : VK_UP, {VK_SHIFT}); break;
            case 3: Press('A', {VK_CONTROL}); break;
            default: (void)Ask(kTreeSelectRow, tree.FirstVisibleRow() + number(5)); break;
        }
        if (number(3) == 0) continue;  // several changes before a painting
        const test::Screenshot partly(tree.Window());
        tree.Repaint();
        ASSERT_TRUE(partly == test::Screenshot(tree.Window())) << round;
    }
}

TEST_F(CTreeTest, ShowsTheWholeOfACutTextUntilTheMouseMovesOn) {
    Make();
    rows.longText = std::string(200, 'x');
    SetCount(5);
    const auto tip = [] {
        const HWND found = ::FindWindowA("BrennvarTip", nullptr);
        return found && ::IsWindowVisible(found) ? TextOfWindow(found) : "none";
    };
    const auto hover = [&](int row, int column) {
        Mouse(WM_MOUSEMOVE, InCell(row, column));
        ::SendMessageA(tree.Window(), WM_TIMER, 2, 0);
        return tip();
    };
    EXPECT_EQ(hover(1, 1), rows.longText);
    rows.longText += 'y';
    tree.Refresh();
    EXPECT_EQ(tip(), "none");
    EXPECT_EQ(hover(1, 1), rows.longText);
    Mouse(WM_MOUSEMOVE, InCell(2, 0));
    EXPECT_EQ(tip(), "none");
    rows.longText = std::string(65'536, '\n');
    (void)hover(1, 1);
    RECT place{};
    ::GetWindowRect(::FindWindowA("BrennvarTip", nullptr), &place);
    const RECT work = MainWorkArea();
    EXPECT_LE(HeightOf(place), HeightOf(work));
    EXPECT_GE(place.top, work.top);
    ::DestroyWindow(tree.Window());
    EXPECT_EQ(tip(), "none");
    // An owner may go on for a while.
    SetCount(10);
    tree.SelectRow(3);
    tree.ScrollTo(5);
}

}  // namespace
}  // namespace brennvar
