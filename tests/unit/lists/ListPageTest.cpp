#include "lists/ListPage_win.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "config/ResourceIds.h"
#include "support/DrawnTexts_win.h"
#include "support/FakeUserValues.h"
#include "support/TempFolder.h"
#include "tree/TreeMessages_win.h"
#include "ui/ChildControls_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

constexpr int kRemove = 2000, kOpen = 2001, kToggle = 2002, kDetails = 2003;
constexpr ListAction kActions[] = {
    {kRemove, Text{406, "Remove"}, ActionPlace::ButtonAndMenu, ActionRows::Selected, ListKey::Delete},
    {kOpen, Text{1, "Deny"}, ActionPlace::ButtonAndMenu, ActionRows::None},
    {kDetails, Text{1362, "D&etails"}, ActionPlace::Menu, ActionRows::Focused, ListKey::Enter, true},
    {kToggle, Text{}, ActionPlace::Hidden, ActionRows::Focused, ListKey::Space}};

// A name, a number whose text says nothing of its place, and the key of each row.
class Model final : public ListModel {
public:
    explicit Model(bool arrangesRows) : m_arrangesRows(arrangesRows) {}

    struct Entry {
        std::string name;
        std::uint64_t number;
    };
    std::vector<Entry> rows;
    std::string done;  // actions with their rows
    std::string read;
    int woken = 0;
    RowOrder order;  // as the page wants it
    std::optional<ListProgress> progress;
    bool isTree = false;                 // the first row is the parent of all others
    int never = -1;                      // the row for which no action is offered
    std::optional<std::string> program;  // that the details are about

    [[nodiscard]] std::string Name() const override { return "Test"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override {
        return {{.title = "Name", .width = 40, .clickAction = kDetails},
                {.title = "Number", .width = 40, .isNumber = true, .clickAction = kToggle},
                {.title = "Rest", .width = 100, .takesRoom = true}};
    }
    [[nodiscard]] std::string EmptyText() const override { return "no rows"; }
    [[nodiscard]] int RowCount() const override { return static_cast<int>(rows.size()); }
    [[nodiscard]] ListCell Cell(int row, int column) const override {
        const Entry& entry = rows.at(static_cast<std::size_t>(row));
        if (column == 0) return {.text = entry.name};
        return {.text = column == 1 ? std::to_string(entry.number % 10) + " of them" : ""};
    }
    [[nodiscard]] std::uint64_t SortNumber(int row, int) const override {
        return rows.at(static_cast<std::size_t>(row)).number;
    }
    [[nodiscard]] std::string Key(int row) const override { return Cell(row, 0).text; }
    [[nodiscard]] RowDetails Details(int row) const override {
        return {.title = "about", .text = Key(row), .program = program};
    }
    [[nodiscard]] std::span<const ListAction> Actions() const override { return kActions; }
    void Do(int action, std::span<const int> changed) override {
        done += std::to_string(action);
        for (const int row : changed) done.append(" ").append(Key(row));
        done += "\n";
    }
    void Read(ReadReason reason) override { read += std::to_string(static_cast<int>(reason)); }
    void OnHidden() override { read += 'h'; }
    void OnWake() override { ++woken; }

    void Set(std::vector<Entry> entries, ListView::Change change = ListView::Change::Rows) {
        ChangeRows([&] {
            rows = std::move(entries);
            return change;
        });
    }
    [[nodiscard]] ListView& Page() const { return *View(); }

    [[nodiscard]] RowShape Shape(int row) const override {
        return isTree ? RowShape{row == 0 ? 0 : 1, row == 0, row == 0} : RowShape{};
    }
    [[nodiscard]] bool ArrangesItself() const override { return m_arrangesRows; }
    void ArrangeBy(const RowOrder& wanted) override { order = wanted; }
    [[nodiscard]] int AllRowCount() const override { return m_arrangesRows ? 1000 : RowCount(); }
    [[nodiscard]] std::optional<ListProgress> Progress() const override { return progress; }
    void StopProgress() override { progress.reset(); }
    [[nodiscard]] bool CanDo(int, int row) const override { return row < 0 || row != never; }

private:
    const bool m_arrangesRows;
};

class ListPageTest : public testing::Test, protected PageOwner {
protected:
    CFonts fonts;
    Language language{nullptr};
    test::FakeUserValues values;
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    Model* model = nullptr;  // the page's
    std::unique_ptr<ListPage> page;
    HWND list = nullptr;

    void SetUp() override { MakePage(); }
    ~ListPageTest() override {
        page.reset();
        EndWindow(parent);
    }
    void MakePage(bool arrangesRows = false) {
        page.reset();
        auto made = std::make_unique<Model>(arrangesRows);
        model = made.get();
        page = std::make_unique<ListPage>(ListPageContext{fonts, language, values, *this},
                                          PageTexts{"title", "line"}, std::move(made));
        ASSERT_TRUE(page->Create(parent));
        page->Place({0, 0, 800, 500});
        page->Show();
        list = page->Item(IDC_PAGE_LIST);
    }

    void OpenPageAt(int, const std::string&) override {}
    void Notify(const std::string&, const std::string&) override {}
    void OpenTool(AddressTool, const std::string&) override {}
    void MakeRule(const TrafficFacts&) override {}
    void Explain(const TrafficFacts&) override {}

    [[nodiscard]] LRESULT Ask(UINT message, int row, int column = 0) const {
        return ::SendMessageA(list, message, static_cast<WPARAM>(row), column);
    }
    [[nodiscard]] std::string Name(int row) const {
        (void)Ask(kTreeQueryCell, row);
        return TextOfWindow(list);
    }
    [[nodiscard]] std::string Names() const {
        std::string names;
        for (int row = 0; row < Ask(kTreeGetRowCount, 0); ++row) names += Name(row) + " ";
        return names;
    }
    // The name of the row that has focus and selection.
    [[nodiscard]] std::string Selected() const {
        const int row = static_cast<int>(Ask(kTreeGetFocusedRow, 0));
        return row >= 0 && Ask(kTreeIsRowSelected, row) == 1 ? Name(row) : "none";
    }
    void Select(int row) const { (void)Ask(kTreeSelectRow, row); }
    void Click(int row, int column) const {
        const LRESULT corner = Ask(kTreeGetCellLeftTop, row, column);
        const LPARAM place = MAKELPARAM(LOWORD(corner) + 4, HIWORD(corner) + 4);
        ::SendMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, place);
        ::SendMessageA(list, WM_LBUTTONUP, 0, place);
    }
    void Press(UINT key) const { ::SendMessageA(list, WM_KEYDOWN, key, 0); }
    void Search(const char* text) const { ::SetWindowTextA(page->Item(IDC_PAGE_SEARCH), text); }
    [[nodiscard]] bool IsEnabled(int button) const { return ::IsWindowEnabled(page->Item(button)) != FALSE; }
    [[nodiscard]] std::string Done() const { return std::exchange(model->done, {}); }
    [[nodiscard]] LRESULT FirstInSight() const { return Ask(kTreeGetFirstVisibleRow, 0); }
    [[nodiscard]] static std::vector<Model::Entry> Numbered(std::uint64_t count) {
        std::vector<Model::Entry> entries;
        for (std::uint64_t i = 0; i < count; ++i) entries.push_back({std::to_string(i), i});
        return entries;
    }
};

TEST_F(ListPageTest, SearchesSortsCountsAndKeepsTheSelection) {
    model->Set({{"ab", 30}, {"b", 4}, {"ac", 200}});
    Select(2);
    for (const char* const names : {"b ab ac ", "ac ab b ", "ab b ac "}) {  // upwards, downwards, as read
        (void)Ask(kTreeClickHeader, 1);
        EXPECT_EQ(Names(), names) << "by the number, whatever its text";
        EXPECT_EQ(Selected(), "ac");
    }
    Search("A");
    EXPECT_EQ(Names(), "ab ac ");
    EXPECT_EQ(test::DrawnText(page->Window(), IDC_PAGE_COUNT), "Entries: 2 of 3");
    Search("nowhere");
    EXPECT_EQ(TextOfWindow(list), "No entry contains this text.");
    Search("");
    model->Set({{"a", 1}, {"b", 2}, {"c", 3}});
    Select(1);
    model->Set({{"new", 9}, {"c", 3}, {"b", 5}});
    EXPECT_EQ(Selected(), "b");
    (void)Ask(kTreeClickHeader, 1);
    model->Set({{"new", 1}, {"c", 3}, {"b", 5}}, ListView::Change::Looks);
    EXPECT_EQ(Names(), "c b new ") << "nothing moves under the mouse";
    Search("ne");
    Search("");
    EXPECT_EQ(Names(), "new c b ") << "until the next search or sort";
    model->Set({{"new", 1}});
    EXPECT_EQ(Selected(), "none");
    EXPECT_FALSE(IsEnabled(kRemove));
}

TEST_F(ListPageTest, ClicksKeysAndButtonsAreActionsOfTheRowsTheyAreMeantFor) {
    EXPECT_TRUE(IsEnabled(kOpen) && !IsEnabled(kRemove)) << "one works without rows";
    Press(VK_DELETE);
    Press(VK_SPACE);
    EXPECT_EQ(Done(), "") << "no row to act upon";
    model->Set({{"a", 1}, {"b", 2}, {"c", 3}});
    Click(1, 1);
    EXPECT_EQ(Done(), "2002 b\n");
    EXPECT_EQ(Selected(), "none") << "the click was the action's";
    Select(2);
    Press(VK_SPACE);
    Press(VK_DELETE);
    Press('A');  // not with Ctrl
    for (const int button : {kRemove, kOpen}) ::SendMessageA(page->Item(button), BM_CLICK, 0, 0);
    EXPECT_EQ(Done(), "2002 c\n2000 c\n2000 c\n2001\n");
    model->never = 1;
    Select(1);
    EXPECT_FALSE(IsEnabled(kRemove));
    Press(VK_DELETE);
    Press(VK_SPACE);
    Click(1, 1);
    EXPECT_EQ(Done(), "");
    page->ShowRow("a");
    EXPECT_EQ(Selected(), "a");
    page->ShowRow("later");
    model->Set({{"a", 1}, {"later", 2}});
    EXPECT_EQ(Selected(), "later") << "as soon as it is there";
    page->ShowRow("never");
    model->Set({{"a", 1}});
    model->Set({{"a", 1}, {"never", 2}});
    EXPECT_EQ(Selected(), "none") << "a list that was read without it has it no more";
    Select(0);
    EXPECT_TRUE(IsEnabled(kRemove));
    model->never = 0;
    model->Set({{"a", 1}, {"never", 2}}, ListView::Change::Looks);
    EXPECT_FALSE(IsEnabled(kRemove)) << "rows say something else now";
}

TEST_F(ListPageTest, DetailsTellOfAProgramWhatThereIsToTell) {
    model->Set({{"a", 1}, {"b", 2}});
    const auto balloon = [] {
        const HWND window = ::FindWindowA("BrennvarBalloon", nullptr);
        return window && ::IsWindowVisible(window) ? TextOfWindow(window) : std::string();
    };
    const test::TempFolder folder;
    const auto waitForProgram = [this] {
        constexpr UINT kProgramRead = WM_APP + 1;  // the page's message to itself
        MSG message;
        ASSERT_GT(::GetMessageA(&message, page->Window(), kProgramRead, kProgramRead), 0);
        ::DispatchMessageA(&message);
    };
    // Of one that a click finds nothing more about than the row says, only the action tells.
    model->program = folder.Write("bare.exe", "no version");
    Click(1, 0);
    EXPECT_EQ(Selected(), "b") << "the click selects as well";
    waitForProgram();
    EXPECT_EQ(balloon(), "");
    Press(VK_RETURN);
    while (balloon().empty()) waitForProgram();
    EXPECT_EQ(balloon(), "about\nb");
    Press(VK_SHIFT);
    EXPECT_EQ(balloon(), "") << "any key closes it";
    model->program = folder.File("gone.exe");
    Click(1, 0);
    while (balloon().empty()) waitForProgram();
    EXPECT_EQ(balloon(), "about\nb\nThis file does not exist.");
    page->Hide();
    EXPECT_EQ(balloon(), "");
    EXPECT_EQ(Done(), "") << "not the model's";
}

TEST_F(ListPageTest, TellsTheModelWhenToReadToStopAndWhenItWantedToBeWoken) {
    page->Reload();
    page->OnRulesChanged();
    page->Hide();
    page->OnRulesChanged();
    EXPECT_EQ(model->read, "012h");
    model->Page().WakeIn(std::chrono::hours(1));
    ::SendMessageA(page->Window(), WM_TIMER, 1, 0);
    EXPECT_EQ(model->woken, 1);
    EXPECT_FALSE(::KillTimer(page->Window(), 1)) << "once";
    page->Show();
    model->progress = ListProgress{.done = 25, .total = 100};
    model->Page().ProgressChanged();
    page->OnEscape();
    EXPECT_FALSE(model->progress);
    // Widths that the rows have asked for are not what the user wants from now on.
    model->Set({{std::string(500, 'x'), 1}});
    EXPECT_TRUE(values.stored.empty());
    EXPECT_LT(Ask(kTreeGetColumnWidth, 0), Scale(400)) << "within reason";
    for (int column = 0; column < 3; ++column) values.stored["TestColumn" + std::to_string(column)] = 50;
    MakePage();
    model->Set({{std::string(500, 'x'), 1}});
    EXPECT_EQ(Ask(kTreeGetColumnWidth, 0), Scale(50));
}

TEST_F(ListPageTest, AModelThatArrangesItsRowsIsToldHowAndKeepsSelectionAndPlace) {
    MakePage(true);
    std::vector<Model::Entry> many = Numbered(100);
    model->Set(many);
    (void)Ask(kTreeClickHeader, 1);
    Search("9");
    EXPECT_EQ(model->order.searched, "9");
    EXPECT_TRUE(model->order.column == 1 && model->order.isNumber);
    EXPECT_EQ(Ask(kTreeGetRowCount, 0), 100) << "the rows are the model's affair";
    model->Set(many);
    Select(60);
    (void)Ask(kTreeEnsureVisible, 60);
    const auto first = FirstInSight();
    ASSERT_GT(first, 0);
    many.insert(many.begin(), {{"x", 0}, {"y", 0}, {"z", 0}});
    model->rows = many;
    model->Page().RowsCameFirst(3);
    EXPECT_EQ(Selected(), "60");
    EXPECT_EQ(FirstInSight(), first + 3) << "what is in sight stays there";
    many.erase(many.begin(), many.begin() + 2);
    model->Set(many);
    EXPECT_EQ(Selected(), "60");
    EXPECT_EQ(FirstInSight(), first + 1);
    ::SendMessageA(list, WM_VSCROLL, SB_TOP, 0);
    model->rows.insert(model->rows.begin(), {"newest", 0});
    model->Page().RowsCameFirst(1);
    EXPECT_EQ(FirstInSight(), 0) << "who looks at the newest rows sees the next ones come";
    EXPECT_EQ(Selected(), "60");
}

TEST_F(ListPageTest, RowsThatComePieceByPieceAreSelectedAsTheyCome) {
    MakePage(true);
    const std::vector<Model::Entry> many = Numbered(100), few = Numbered(10);
    const auto come = [&](const std::vector<Model::Entry>& rows, ListView::Change change) {
        model->Set(rows, change);
        model->Page().ProgressChanged();
    };
    model->Set(many);
    Select(60);
    (void)Ask(kTreeEnsureVisible, 60);
    ::SendMessageA(list, WM_VSCROLL, SB_LINEDOWN, 0);
    const auto first = FirstInSight();
    model->progress = ListProgress{};
    // Another filter: the place stays. Another search: what has the focus stays in sight.
    for (const bool isSearch : {false, true}) {
        if (isSearch) Search("0");
        come(few, ListView::Change::Rows);
        EXPECT_EQ(Selected(), "none");
        come(few, ListView::Change::Rows);  // begun anew meanwhile
        come(many, ListView::Change::Behind);
        EXPECT_EQ(Selected(), "60");
        EXPECT_EQ(FirstInSight() == first, !isSearch);
        EXPECT_GT(FirstInSight(), 0);
    }
    // What the user selects meanwhile counts, and what has not come at the end does not.
    come(few, ListView::Change::Rows);
    Click(3, 2);
    come(many, ListView::Change::Behind);
    EXPECT_EQ(Selected(), "3");
    EXPECT_EQ(Ask(kTreeGetSelectedCount, 0), 1);
    Select(60);
    come(few, ListView::Change::Rows);
    model->progress.reset();
    model->Page().ProgressChanged();
    come(many, ListView::Change::Behind);
    EXPECT_EQ(Ask(kTreeGetSelectedCount, 0), 0);
    // Stopped, the rows are in the order that they had.
    model->Page().OrderKept({.searched = "x", .column = 1, .isAscending = false});
    EXPECT_EQ(TextOfWindow(page->Item(IDC_PAGE_SEARCH)), "x");
    (void)Ask(kTreeClickHeader, 1);
    EXPECT_EQ(model->order.column, RowOrder::kAsRead) << "what comes after downwards";
    model->isTree = true;
    model->Set({{"a", 1}, {"b", 2}});
    EXPECT_EQ(Ask(kTreeGetExpanded, 0), 1);
    EXPECT_EQ(Ask(kTreeGetLevel, 1), 1);
}

}  // namespace
}  // namespace brennvar
