#include "tree/Tree_win.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "base/ComOfThread_win.h"
#include "support/AccessibleReader_win.h"
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
    mutable int pictures = 0;      // cells that were asked for with their pictures

    [[nodiscard]] int RowCount() const override { return count; }
    [[nodiscard]] TreeCell Cell(int row, int column) const override {
        if (row < 0 || row >= count) ++oddQuestions;
        if (throws) throw std::runtime_error("no cell");
        TreeCell cell;
        cell.text = "r" + std::to_string(row) + "c" + std::to_string(column);
        if (column == 1 && !secondText.empty()) cell.text = secondText;
        if (column == 1 && hasChecks) cell.checked = false;
        ++pictures;
        return cell;
    }
    [[nodiscard]] TreeCell Words(int row, int column) const override {
        TreeCell cell = Cell(row, column);
        --pictures;
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

TEST_F(CTreeTest, TellsScreenReadersOfItsRows) {
    const ComOfThread com;
    rows.secondText = "Allow\tme";
    SetCount(100);
    tree.SelectRow(1);
    const test::AccessibleReader reader(tree.Window());
    ASSERT_TRUE(reader);
    const auto runPosted = [] {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
    };
    EXPECT_EQ(reader.Role(), ROLE_SYSTEM_LIST);
    EXPECT_EQ(reader.Count(), 100 + 3);
    EXPECT_EQ(reader.Role(2), ROLE_SYSTEM_LISTITEM);
    rows.pictures = 0;
    EXPECT_EQ(reader.Name(2), L"One: r1c0; Two: Allow me; Three: r1c2");
    EXPECT_EQ(rows.pictures, 0);
    EXPECT_TRUE(reader.Is(STATE_SYSTEM_SELECTED, 2) && reader.Is(STATE_SYSTEM_FOCUSED, 2));
    EXPECT_FALSE(reader.Is(STATE_SYSTEM_SELECTED, 1) || reader.Is(STATE_SYSTEM_FOCUSED, 1));
    EXPECT_FALSE(reader.Is(STATE_SYSTEM_OFFSCREEN, 2));
    EXPECT_TRUE(reader.Is(STATE_SYSTEM_OFFSCREEN, 100));
    VARIANT child{};
    EXPECT_EQ(reader->get_accFocus(&child), S_OK);
    EXPECT_EQ(child.lVal, 2);
    // Where it stands is what is hit there.
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(reader->accLocation(&left, &top, &width, &height, test::Part(3)), S_OK);
    EXPECT_EQ(reader->accHitTest(left + width / 2, top + height / 2, &child), S_OK);
    EXPECT_EQ(child.lVal, 3);
    // The titles of the columns come behind the rows.
    constexpr LONG kSecondTitle = 102;
    EXPECT_EQ(reader.Role(kSecondTitle), ROLE_SYSTEM_COLUMNHEADER);
    EXPECT_EQ(reader.Name(kSecondTitle), L"Two");
    EXPECT_EQ(reader.Action(kSecondTitle), L"");
    int clicked = -1;
    tree.events.headerClicked = [&](int column) { clicked = column; };
    EXPECT_EQ(reader.Action(kSecondTitle), L"Press");
    EXPECT_EQ(reader.Do(kSecondTitle), S_OK);
    runPosted();
    EXPECT_EQ(clicked, 1);
    const RECT title = reader.Place(kSecondTitle);
    EXPECT_EQ(reader->accHitTest(title.left + 1, title.bottom - 1, &child), S_OK);
    EXPECT_EQ(child.lVal, kSecondTitle);
    EXPECT_EQ(title.bottom, reader.Place(1).top);
    EXPECT_EQ(reader->accSelect(SELFLAG_TAKESELECTION, test::Part(kSecondTitle)), E_INVALIDARG);
    EXPECT_EQ(reader.Role(kSecondTitle + 2), -1);

    int changes = 0;
    tree.events.selectionChanged = [&] { ++changes; };
    struct Step {
        LONG flags, part;
        std::vector<LONG> selected;  // afterwards
    };
    const Step steps[] = {{SELFLAG_TAKESELECTION, 4, {4}},      {SELFLAG_ADDSELECTION, 7, {4, 7}},
                          {SELFLAG_ADDSELECTION, 7, {4, 7}},    {SELFLAG_ADDSELECTION, 9, {4, 7, 9}},
                          {SELFLAG_REMOVESELECTION, 4, {7, 9}}, {SELFLAG_REMOVESELECTION, 9, {7}}};
    for (const Step& step : steps) {
        EXPECT_EQ(reader->accSelect(step.flags, test::Part(step.part)), S_OK);
        std::vector<LONG> selected;
        ASSERT_EQ(reader->get_accSelection(&child), S_OK);
        if (child.vt == VT_I4) selected.push_back(child.lVal);
        if (child.vt == VT_UNKNOWN) {
            IEnumVARIANT* numbers = nullptr;
            ASSERT_EQ(child.punkVal->QueryInterface(__uuidof(IEnumVARIANT), reinterpret_cast<void**>(&numbers)),
                      S_OK);
            child.punkVal->Release();
            VARIANT number{};
            while (numbers->Next(1, &number, nullptr) == S_OK) selected.push_back(number.lVal);
            numbers->Release();
        }
        EXPECT_EQ(selected, step.selected);
    }
    EXPECT_EQ(changes, 5) << "one is selected already";
    EXPECT_EQ(reader->accSelect(SELFLAG_EXTENDSELECTION, test::Part(1)), E_INVALIDARG);

    int opened = -1;
    EXPECT_EQ(reader.Do(6), DISP_E_MEMBERNOTFOUND) << "nobody opens rows";
    tree.events.opened = [&](int row) { opened = row; };
    EXPECT_EQ(reader.Do(6), S_OK);
    runPosted();
    EXPECT_EQ(opened, 5);
    EXPECT_EQ(tree.SelectedRow(), 5);
    rows.hasChecks = true;
    std::vector<bool> checks;
    tree.events.checkToggled = [&](int, int column, bool isChecked) { checks = {column == 1, isChecked}; };
    EXPECT_EQ(reader.Action(3), L"Check");
    EXPECT_EQ(reader.Do(3), S_OK);
    runPosted();
    EXPECT_EQ(checks, (std::vector{true, true}));
    // The rows go while an action is under way.
    EXPECT_EQ(reader.Do(90), S_OK);
    checks.clear();
    SetCount(10);
    runPosted();
    EXPECT_TRUE(checks.empty());
    EXPECT_EQ(reader->get_accName(test::Part(90), nullptr), E_POINTER);
    EXPECT_EQ(reader.Name(90), L"");
    EXPECT_EQ(rows.oddQuestions, 0);
}

}  // namespace
}  // namespace brennvar
