#include "tree/Tree_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>

#include "base/ComOfThread_win.h"
#include "support/AccessibleReader_win.h"
#include "support/ClipboardText_win.h"
#include "support/ControlWindow.h"
#include "tree/OutputList_win.h"
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
    [[nodiscard]] TreeRow Row(int) const override {
        return throws ? throw std::runtime_error("no row") : TreeRow{};
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
        std::fill(std::begin(state), std::end(state), BYTE{0});
        ::SetKeyboardState(state);
    }
    void Mouse(UINT message, LPARAM place) const { ::SendMessageA(tree.Window(), message, 0, place); }
};

TEST_F(CTreeTest, CopiesSelectedRowsAsLinesOfCells) {
    SetCount(1'000'000);
    rows.secondText = "a\tb\r\nc";
    RowRanges some;
    some.Add(1, 1);
    some.Add(3, 3);
    tree.SetSelection(some, 3);
    Press('C', {VK_CONTROL});
    EXPECT_EQ(test::ClipboardText(), L"r1c0\ta b  c\tr1c2\r\nr3c0\ta b  c\tr3c2\r\n");
    Press('A', {VK_CONTROL});
    tree.CopySelection();
    const std::wstring all = test::ClipboardText();
    EXPECT_EQ(std::count(all.begin(), all.end(), L'\n'), CTree::kMostCopiedRows);
    tree.SelectRow(-1);
    tree.CopySelection();  // nothing to copy: what is there stays
    EXPECT_EQ(test::ClipboardText(), all);
}

TEST_F(CTreeTest, SurvivesRowsThatGoAwayUnseen) {
    rows.hasChecks = true;
    SetCount(1000);
    Press(VK_END);
    const auto check = static_cast<LPARAM>(Ask(kTreeGetCheckPosition, 995, 1));
    Mouse(WM_MOUSEMOVE, check);
    Mouse(WM_LBUTTONDOWN, check);
    rows.count = 3;  // and nobody has told the tree
    for (const UINT message : {WM_LBUTTONUP, WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MOUSEMOVE}) {
        Mouse(message, check);
    }
    ::SendMessageA(tree.Window(), WM_TIMER, 2, 0);
    for (const UINT key : {VK_UP, VK_SPACE, VK_RETURN, VK_NEXT}) Press(key);
    Press('C', {VK_CONTROL});
    ::RedrawWindow(tree.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    tree.Refresh();
    EXPECT_EQ(Ask(kTreeGetFirstVisibleRow), 0);
    for (const UINT message : {kTreeSelectRow, kTreeFocusRow, kTreeIsRowSelected, kTreeEnsureVisible,
                               kTreeGetCellLeftTop, kTreeGetCheck, kTreeGetExpanded, kTreeQueryCell}) {
        EXPECT_TRUE(Ask(message, 3) == -1 && Ask(message, -2) == -1) << message;
    }
    rows.throws = true;
    ::RedrawWindow(tree.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_FALSE(::GetUpdateRect(tree.Window(), nullptr, FALSE)) << "it would paint for ever";
    SetCount(0);
    for (const UINT key : {VK_UP, VK_DOWN, VK_HOME, VK_END, VK_NEXT, VK_SPACE, VK_LEFT, VK_RIGHT}) Press(key);
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

TEST_F(CTreeTest, AnOutputKeepsItsLastLinesAndFollowsThemUnlessTheUserReads) {
    COutputList list(100);
    ASSERT_TRUE(list.Create(window.Window(), 2, look, "No output yet."));
    list.Place({0, 0, 300, 200});
    const auto ask = [&](UINT message) { return static_cast<int>(::SendMessageA(list.Window(), message, 0, 0)); };
    list.Append("one\r\ntwo\n\nfour\n");
    EXPECT_EQ(list.Text(), "one\r\ntwo\r\n\r\nfour\r\n");
    list.Clear();
    for (int line = 0; line < 100; ++line) list.Append("line" + std::to_string(line));
    // The user reads further up: what is in sight stays there, although the oldest lines go.
    ::SendMessageA(list.Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, 5 * WHEEL_DELTA), 0);
    const int before = ask(kTreeGetFirstVisibleRow);
    for (int line = 100; line < 120; ++line) list.Append("line" + std::to_string(line));
    EXPECT_EQ(list.LineCount(), 100U);
    EXPECT_EQ(ask(kTreeGetFirstVisibleRow), before - 20);
    ::SendMessageA(list.Window(), WM_VSCROLL, SB_BOTTOM, 0);
    list.Append(std::string(500, 'w'));  // longer than the list is wide: a second scroll bar comes
    EXPECT_EQ(ask(kTreeGetFirstVisibleRow), 100 - ask(kTreeGetVisibleRowCount));
}

// That lists tell of their rows and titles is seen in the finished program.
TEST_F(CTreeTest, ScreenReadersSelectAndPressWhatIsStillThere) {
    const ComOfThread com;
    rows.secondText = "Allow\tme";
    SetCount(100);
    const test::AccessibleReader reader(tree.Window());
    const auto press = [&](LONG part) {
        const HRESULT result = reader.Do(part);
        for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) ::DispatchMessageA(&message);
        return result;
    };
    EXPECT_EQ(reader.Name(2), L"One: r1c0; Two: Allow me; Three: r1c2");
    int changes = 0, clicked = -1, opened = -1, checked = 0;
    tree.events.selectionChanged = [&] { ++changes; };
    const std::pair<LONG, std::vector<LONG>> steps[] = {{SELFLAG_TAKESELECTION, {7}},
                                                        {SELFLAG_ADDSELECTION, {7, 9}},
                                                        {SELFLAG_ADDSELECTION, {7, 9}},
                                                        {SELFLAG_REMOVESELECTION, {7}},
                                                        {SELFLAG_REMOVESELECTION, {7}}};
    for (const auto& [flags, expected] : steps) {
        EXPECT_EQ(reader->accSelect(flags, test::Part(flags == SELFLAG_TAKESELECTION ? 7 : 9)), S_OK);
        std::vector<LONG> selected;
        for (LONG part = 1; part <= 100; ++part) {
            if (reader.Is(STATE_SYSTEM_SELECTED, part)) selected.push_back(part);
        }
        EXPECT_EQ(selected, expected);
    }
    EXPECT_EQ(changes, 3) << "one is as it is to be already";
    EXPECT_EQ(press(6), DISP_E_MEMBERNOTFOUND) << "nobody opens rows";
    tree.events.opened = [&](int row) { opened = row; };
    EXPECT_EQ(press(6), S_OK);
    EXPECT_EQ(std::pair(opened, tree.SelectedRow()), std::pair(5, 5));
    rows.hasChecks = true;
    tree.events.checkToggled = [&](int row, int column, bool isSet) { checked = isSet ? 10 * row + column : 0; };
    EXPECT_EQ(press(3), S_OK);
    EXPECT_EQ(checked, 21);
    tree.events.headerClicked = [&](int column) { clicked = column; };
    EXPECT_EQ(press(102), S_OK) << "the titles of the columns come behind the rows";
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(reader->accSelect(SELFLAG_TAKESELECTION, test::Part(102)), E_INVALIDARG);
    // The rows go while an action is under way.
    EXPECT_EQ(reader.Do(90), S_OK);
    SetCount(10);
    EXPECT_EQ(press(90), E_INVALIDARG);
    EXPECT_EQ(rows.oddQuestions, 0);
}

}  // namespace
}  // namespace brennvar
