// What a list shows and what can be done with its rows, without a window: the one list page (lists/ListPage_win.h)
// shows any of them. A model answers for single rows and cells when they are painted, so that it may stand for
// millions of rows; it numbers its rows from 0 in the order in which they were read, and knows nothing of the order
// in which they are shown. User-interface thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "config/DetailsSheet.h"
#include "config/SkinTones.h"
#include "config/Text.h"
#include "dialogs/AddressTools.h"
#include "dialogs/SaveWish.h"
#include "lists/ListRows.h"
#include "tree/CellMarks.h"
#include "tree/RowRanges.h"

namespace brennvar {

struct RowOrder;

struct ListColumn {
    std::string title;
    int width = 0;           // at least, pixels at 96 per inch
    bool isNumber = false;   // aligned right, and sorted by ListModel::SortNumber
    bool takesRoom = false;  // gets what the other columns leave
    bool isPath = false;     // cut in the middle, so that the file name stays
    // 0: it stays. Where the list has no room for all columns, those of the highest number are left out first,
    // together; what they say is not lost, but said by tips, details and copied rows.
    int yields = 0;
    bool hasIcon = false;  // the program's icon stands here; in the first column when no column has it
    // Texts that must never be cut, whether or not a row holds them now: all states, all actions.
    std::vector<std::string> longest{};
    int clickAction = 0;  // the action that a click into a cell of this column is, on its row; 0: none
    int checkAction = 0;  // the same for a click on the cell's check box
};

struct ListCell {
    std::string text;
    Tone tone = Tone::Plain;
    std::optional<bool> checked{};  // the cell has a check box
    CellGlyph glyph = CellGlyph::None;
};

// Where a row stands in a list that is a tree.
struct RowShape {
    int level = 0;  // 0: top row
    bool hasChildren = false;
    bool isExpanded = false;
};

// What the user chooses above the list: one of several, in a box, or yes and no, a check box.
struct ListChoice {
    int id = 0;  // of its control, from 200 upwards
    std::string label;
    std::vector<std::string> items{};  // none: a check box
    int chosen = 0;                    // of the items; of a check box 0 or 1
    int width = 0;  // of the box at least, pixels at 96 per inch; up to 176 where an item needs it
};

// How far something has come that takes long; it can be stopped.
struct ListProgress {
    std::uint64_t done = 0;
    std::uint64_t total = 0;
    std::string text{};  // what it is, where that is not plain
};

enum class ListKey : std::uint8_t {
    None,
    Space,
    Delete,
    Enter,  // a double click as well
    ControlUp,
    ControlDown,
};

enum class ActionPlace : std::uint8_t {
    Hidden,  // reached by its key or a click only
    Menu,
    ButtonAndMenu,  // a button below the list
};

enum class ActionRows : std::uint8_t {
    None,          // works without a row
    Focused,       // one row: that of the focus, or the one that was clicked
    FocusedIfAny,  // likewise where there is one that it can be done with; works without
    Selected,
    SelectedOrAll,  // without a selection no rows: then all are meant
};

struct ListAction {
    int id = 0;      // of its button and its menu item, from 100 upwards
    Text caption{};  // number 0 and no text for hidden ones
    ActionPlace place = ActionPlace::Hidden;
    ActionRows rows = ActionRows::Selected;
    ListKey key = ListKey::None;
    // Nothing that the model does: the page shows ListModel::Details of the row.
    bool showsDetails = false;
    bool destroys = false;
};
// Whether it can only be done with a row.
[[nodiscard]] constexpr bool NeedsRow(const ListAction& action) {
    return action.rows == ActionRows::Focused || action.rows == ActionRows::Selected;
}

// A question that comes before an action; its other answer is "Cancel", which is the default.
struct ListQuestion {
    std::string text;
    std::string yes;
};

// What a row has to say beside its cells, shown in a balloon.
struct RowDetails {
    std::string title;
    std::string text;  // lines
    // The program file whose description and picture are added; the page reads them.
    std::optional<std::string> program{};
};

// The page, as its model sees it.
class ListView : public AddressTools {
public:
    // Around every change of the rows: before it, while the old rows can still be asked for, and after it. What was
    // selected is selected again, by the keys of the rows.
    virtual void BeforeChange() = 0;
    enum class Change : std::uint8_t {
        Rows,    // there are other rows now, or others in another order
        Behind,  // more rows have come behind those that there were, which are the same
        Looks,   // texts or tones of some: they stay where they are until the next search or sort
    };
    virtual void AfterChange(Change change) = 0;
    // So many rows have come before all others: what is in sight and what is selected stays, unless the user looks
    // at the first row. Without BeforeChange.
    virtual void RowsCameFirst(int count) = 0;
    virtual void EmptyTextChanged() = 0;
    virtual void ChoicesChanged() = 0;
    // The rows stay in this order, whatever was wished last: the search or the sort was stopped.
    virtual void OrderKept(const RowOrder& order) = 0;
    virtual void ProgressChanged() = 0;
    virtual void SummaryChanged() = 0;
    // Calls ListModel::OnWake once, so much later. Instead of the call that is due now, if there is one.
    virtual void WakeIn(std::chrono::milliseconds time) = 0;
    // A command for the window that the page belongs to, carried out later.
    virtual void PostCommand(int command) = 0;
    // Another page, and there the row with this key, as soon as that page has it.
    virtual void OpenPage(int command, const std::string& key) = 0;

    // Shows the sheet until the user closes it, which pumps messages.
    virtual void ShowSheet(const DetailsSheet& sheet) = 0;
    // The sheet that is shown says this now; nothing, when none is.
    virtual void UpdateSheet(const DetailsSheet& sheet) = 0;
    // Asks where to, which pumps messages; nothing when the user would rather not.
    [[nodiscard]] virtual std::optional<SavePlace> AskSavePlace(const SaveWish& wish) = 0;
    virtual void CopyText(const std::string& text) = 0;
    // Opened by the shell, on a thread that nobody waits for: an address of the web, the folder of a file.
    virtual void OpenLink(const std::string& address) = 0;
    virtual void OpenFolderOf(const std::string& file) = 0;
    // A notice of the program itself, at the notification area.
    virtual void Tell(const std::string& title, const std::string& text) = 0;
};

enum class ReadReason : std::uint8_t {
    Shown,         // the page has come to the user's sight
    Wished,        // F5
    RulesChanged,  // the service tells of new application rules, while the page is shown
    LogsDeleted,   // the service has been told to delete logs, while the page is shown
};

class ListModel : public ListRows {
public:
    ListModel() = default;
    ListModel(const ListModel&) = delete;
    ListModel& operator=(const ListModel&) = delete;

    // Borrowed; it is there before anything is read.
    void ShowIn(ListView& view) { m_view = &view; }

    // Begins the names of the user values that keep the widths of the columns.
    [[nodiscard]] virtual std::string Name() const = 0;
    // Asked once.
    [[nodiscard]] virtual std::vector<ListColumn> Columns() const = 0;
    // Why there are no rows, and what to do about it.
    [[nodiscard]] virtual std::string EmptyText() const = 0;

    // The answer that the page gives before its data, in one line below the title: who talks to whom, what was
    // decided. Nothing: the line says what the page shows.
    [[nodiscard]] virtual std::optional<std::string> Summary() const { return std::nullopt; }

    [[nodiscard]] virtual ListCell Cell(int row, int column) const = 0;
    [[nodiscard]] std::string CellText(int row, int column) const override { return Cell(row, column).text; }
    // What the tip of the cell says, when it says more than the cell.
    [[nodiscard]] virtual std::string CellTip(int /*row*/, int /*column*/) const { return {}; }
    [[nodiscard]] virtual RowMark Mark(int /*row*/) const { return RowMark::None; }
    [[nodiscard]] virtual RowShape Shape(int /*row*/) const { return {}; }
    // The user opens or closes a row that has children; the rows behind it are counted anew.
    virtual void SetExpanded(int /*row*/, bool /*isExpanded*/) {}
    // What makes a row the same one in the next reading.
    [[nodiscard]] virtual std::string Key(int row) const = 0;
    // The row with this key, -1: none. Looks through all rows, if not said otherwise.
    [[nodiscard]] virtual int FindRow(const std::string& key) const;

    // Models whose rows are too many to be searched and sorted on this thread number their rows as they are to be
    // shown, and are told what the user wants; the rows change when they have been found.
    [[nodiscard]] virtual bool ArrangesItself() const { return false; }
    virtual void ArrangeBy(const RowOrder& /*order*/) {}
    // The number of rows without the search, for the count below the list.
    [[nodiscard]] virtual int AllRowCount() const { return RowCount(); }

    [[nodiscard]] virtual std::vector<ListChoice> Choices() const { return {}; }
    virtual void Choose(int /*id*/, int /*item*/) {}

    // While something takes long. Esc and the button beside its bar stop it.
    [[nodiscard]] virtual std::optional<ListProgress> Progress() const { return std::nullopt; }
    virtual void StopProgress() {}
    // What the user is asked when the page is to be left now; its answer stops the progress. Nothing: it may be
    // left.
    [[nodiscard]] virtual std::optional<ListQuestion> LeavingQuestion() const { return std::nullopt; }
    // The program file whose icon stands in the row; empty: a program that is not known. Nothing: no icon.
    [[nodiscard]] virtual std::optional<std::string> Program(int /*row*/) const { return std::nullopt; }

    [[nodiscard]] virtual RowDetails Details(int /*row*/) const { return {}; }
    // In the order of buttons and menu.
    [[nodiscard]] virtual std::span<const ListAction> Actions() const { return {}; }
    // Whether the action is offered for this row, -1 where it needs none; what is not is grey.
    [[nodiscard]] virtual bool CanDo(int /*action*/, int /*row*/) const { return true; }
    // What the user is asked before; nothing: no question.
    [[nodiscard]] virtual std::optional<ListQuestion> Question(int /*action*/,
                                                               std::span<const int> /*rows*/) const {
        return std::nullopt;
    }
    // As many rows as the action wants; at least one, unless it needs none.
    virtual void Do(int /*action*/, std::span<const int> /*rows*/) {}
    // How the user wants the rows to be shown, whenever that changes; before they are.
    virtual void OnOrder(const RowOrder& /*order*/) {}
    // Whether the user may drag rows to another place now, and that he has: these, in their order, are to stand
    // before this row; the number of rows: behind all.
    [[nodiscard]] virtual bool CanDragRows() const { return false; }
    virtual void DragRows(std::span<const int> /*rows*/, int /*before*/) {}
    // Ctrl+C for rows whose texts are not at hand. True: the model brings them to ListView::CopyText.
    virtual bool Copy(const RowRanges& /*rows*/) { return false; }

    virtual void Read(ReadReason reason) = 0;
    // Nobody sees the page any more.
    virtual void OnHidden() {}
    virtual void OnWake() {}

protected:
    // Null while no page shows the model.
    [[nodiscard]] ListView* View() const { return m_view; }
    // Changes the rows by the given step, which tells what has changed.
    template <class Step>
    void ChangeRows(Step&& step) {
        if (m_view) m_view->BeforeChange();
        const ListView::Change change = step();
        if (m_view) m_view->AfterChange(change);
    }

private:
    ListView* m_view = nullptr;
};

}  // namespace brennvar
