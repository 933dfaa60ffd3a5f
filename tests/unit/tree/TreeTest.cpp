#include "tree/Tree_win.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "support/ControlWindow.h"
#include "tree/TreeMessages_win.h"

namespace brennvar {
namespace {

class TestRows final : public TreeRows {
public:
    int count = 0;
    bool throws = false;
    bool hasChecks = false;
    std::string secondText;        // of every row, when it is not empty
    mutable int oddQuestions = 0;  // about rows that do not exist

    [[nodiscard]] int RowCount() const override { return count; }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        if (row < 0 || row >= count) ++oddQuestions;
        if (throws) throw std::runtime_error("no cell");
        TreeCell cell;
        cell.text = "r" + std::to_string(row) + "c" + std::to_string(column);
        if (column == 1 && !secondText.empty()) cell.text = secondText;
        if (column == 1 && hasChecks) cell.checked = false;
        return cell;
    }
    [[nodiscard]] TreeRow Row(int /*row*/) const override {
        if (throws) throw std::runtime_error("no row");
        return {};
    }
};

class CTreeTest : public testing::Test {
protected:
    test::TestSkin skin;
    const Look look = skin.MakeLook();
    test::ControlWindow window;
    TestRows rows;
    CTree tree;

    void SetUp() override {
        const TreeColumn columns[] = {{.title = "One", .width = 120},
                                      {.title = "Two", .width = 100, .takesRoom = true},
                                      {.title = "Three", .width = 80, .isNumber = true}};
        ASSERT_TRUE(tree.Create({.parent = window.Window(), .id = 1, .selectsMany = true}, look, columns, rows));
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
    // Inside the first cell of a row, where the mark of a parent is.
    [[nodiscard]] LPARAM InRow(int row) const {
        const LRESULT corner = Ask(kTreeGetCellLeftTop, row);
        EXPECT_NE(corner, -1) << row;
        return MAKELPARAM(LOWORD(corner) + 16, HIWORD(corner) + 12);
    }
};

TEST_F(CTreeTest, CopiesSelectedRowsAsLinesOfCells) {
    SetCount(1'000'000);
    rows.secondText = "a\tb\r\nc";
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

TEST_F(CTreeTest, SurvivesRowsThatGoAwayUnseen) {
    rows.hasChecks = true;
    SetCount(1000);
    Press(VK_END);
    const LPARAM place = InRow(995);
    const auto check = static_cast<LPARAM>(Ask(kTreeGetCheckPosition, 995, 1));
    Mouse(WM_MOUSEMOVE, check);
    Mouse(WM_LBUTTONDOWN, check);
    rows.count = 3;  // and nobody has told the tree
    Mouse(WM_LBUTTONUP, check);
    Click(place);
    for (const UINT message : {WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MOUSEMOVE}) Mouse(message, place);
    ::SendMessageA(tree.Window(), WM_TIMER, 2, 0);
    for (const int key : {VK_UP, VK_SPACE, VK_RETURN, VK_NEXT}) Press(static_cast<UINT>(key));
    Press('C', {VK_CONTROL});
    ::RedrawWindow(tree.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    tree.Refresh();
    EXPECT_EQ(Ask(kTreeGetFirstVisibleRow), 0);
    for (const UINT message : {kTreeSelectRow, kTreeFocusRow, kTreeIsRowSelected, kTreeEnsureVisible,
                               kTreeGetCellLeftTop, kTreeGetCheck, kTreeGetExpanded, kTreeQueryCell}) {
        EXPECT_TRUE(Ask(message, 3) == -1 && Ask(message, -2) == -1) << message;
    }
    rows.throws = true;
    Click(InRow(1));
    ::RedrawWindow(tree.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_FALSE(::GetUpdateRect(tree.Window(), nullptr, FALSE)) << "it would paint for ever";
    SetCount(0);
    for (const int key : {VK_UP, VK_DOWN, VK_HOME, VK_END, VK_NEXT, VK_SPACE, VK_LEFT, VK_RIGHT})
        Press(static_cast<UINT>(key));
    EXPECT_EQ(Ask(kTreeGetFocusedRow), -1);
    EXPECT_EQ(rows.oddQuestions, 0);
}

TEST_F(CTreeTest, ScrolledPicturesAreThoseThatArePaintedAnew) {
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

}  // namespace
}  // namespace brennvar
