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

#include "config/SkinTones.h"
#include "config/Text.h"

namespace brennvar {

struct ListColumn {
    std::string title;
    int width = 0;           // at least, pixels at 96 per inch
    bool isNumber = false;   // aligned right, and sorted by ListModel::SortNumber
    bool takesRoom = false;  // gets what the other columns leave
    // Texts that must never be cut, whether or not a row holds them now: all states, all actions.
    std::vector<std::string> longest{};
    int clickAction = 0;  // the action that a click into a cell of this column is, on its row; 0: none
};

struct ListCell {
    std::string text;
    Tone tone = Tone::Plain;
    std::optional<bool> checked{};  // the cell has a check box
};

enum class ListKey : std::uint8_t { None, Space, Delete, Enter };  // Enter: a double click as well

enum class ActionPlace : std::uint8_t {
    Hidden,  // reached by its key or a click only
    Menu,
    ButtonAndMenu,  // a button below the list
};

enum class ActionRows : std::uint8_t {
    None,     // works without a row
    Focused,  // one row: that of the focus, or the one that was clicked
    Selected,
};

struct ListAction {
    int id = 0;      // of its button and its menu item, from 100 upwards
    Text caption{};  // number 0 and no text for hidden ones
    ActionPlace place = ActionPlace::Hidden;
    ActionRows rows = ActionRows::Selected;
    ListKey key = ListKey::None;
    // Nothing that the model does: the page shows ListModel::Details of the row.
    bool showsDetails = false;
};

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
class ListView {
public:
    virtual ~ListView() = default;
    // Around every change of the rows: before it, while the old rows can still be asked for, and after it. What was
    // selected is selected again, by the keys of the rows.
    virtual void BeforeChange() = 0;
    enum class Change : std::uint8_t {
        Rows,   // there are other rows now, or others in another order
        Looks,  // texts or tones of some: they stay where they are until the next search or sort
    };
    virtual void AfterChange(Change change) = 0;
    virtual void EmptyTextChanged() = 0;
    // Calls ListModel::OnWake once, so much later. Instead of the call that is due now, if there is one.
    virtual void WakeIn(std::chrono::milliseconds time) = 0;
    // A command for the window that the page belongs to, carried out later.
    virtual void PostCommand(int command) = 0;
};

enum class ReadReason : std::uint8_t {
    Shown,         // the page has come to the user's sight
    Wished,        // F5
    RulesChanged,  // the service tells of new application rules, while the page is shown
};

class ListModel {
public:
    ListModel() = default;
    ListModel(const ListModel&) = delete;
    ListModel& operator=(const ListModel&) = delete;
    virtual ~ListModel() = default;

    // Borrowed; it is there before anything is read.
    void ShowIn(ListView& view) { m_view = &view; }

    // Begins the names of the user values that keep the widths of the columns.
    [[nodiscard]] virtual std::string Name() const = 0;
    // Asked once.
    [[nodiscard]] virtual std::vector<ListColumn> Columns() const = 0;
    // Why there are no rows, and what to do about it.
    [[nodiscard]] virtual std::string EmptyText() const = 0;

    [[nodiscard]] virtual int RowCount() const = 0;
    [[nodiscard]] virtual ListCell Cell(int row, int column) const = 0;
    // What is searched and sorted: the text of the cell, where that can be had for less.
    [[nodiscard]] virtual std::string CellText(int row, int column) const { return Cell(row, column).text; }
    // Of a cell in a column of numbers: its place among them. The number that its text begins with, if not said
    // otherwise.
    [[nodiscard]] virtual std::uint64_t SortNumber(int row, int column) const;
    // What makes a row the same one in the next reading.
    [[nodiscard]] virtual std::string Key(int row) const = 0;
    // The program file whose icon stands before the row; empty: a program that is not known. Nothing: no icon.
    [[nodiscard]] virtual std::optional<std::string> Program(int /*row*/) const { return std::nullopt; }

    [[nodiscard]] virtual RowDetails Details(int /*row*/) const { return {}; }
    // In the order of buttons and menu.
    [[nodiscard]] virtual std::span<const ListAction> Actions() const { return {}; }
    // What the user is asked before; nothing: no question.
    [[nodiscard]] virtual std::optional<ListQuestion> Question(int /*action*/, std::size_t /*rowCount*/) const {
        return std::nullopt;
    }
    // As many rows as the action wants; at least one, unless it wants none.
    virtual void Do(int /*action*/, std::span<const int> /*rows*/) {}

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
