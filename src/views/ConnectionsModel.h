// The Connections page: every connection and listening port with its program, as each reading of the driver's
// tables brings them while the page is shown. What came or went is marked until the next reading. The rows may
// stand below their programs.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "config/Amounts.h"
#include "config/Language.h"
#include "config/UserValues.h"
#include "lists/ListModel.h"
#include "lists/RowOrder.h"
#include "views/ConnectionActions.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

inline constexpr char kUserValueConnectionsFilter[] = "ConnectionsFilter";  // ConnectionFilter
inline constexpr char kUserValueConnectionsGrouped[] = "ConnectionsGrouped";

class ConnectionsModel final : public ListModel {
public:
    // All are borrowed, and outlive the tasks on the threads.
    struct Parts {
        const Language& language;
        ConnectionTables& tables;
        TaskQueue& reads;        // files
        TaskQueue& driverReads;  // what is made of the tables
        const Clock& clock;
        ServiceLink& link;
        TaskQueue& programQueue;
        const ProgramFiles& programFiles;
        Commander& commander;
        const OptionSource& options;
        UserValues& userValues;
        LogLookups& lookups;
        BlockedAddresses& blocked;
    };
    explicit ConnectionsModel(const Parts& parts);

    [[nodiscard]] std::string Name() const override { return "Connections"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override;
    [[nodiscard]] std::string EmptyText() const override;
    [[nodiscard]] std::optional<std::string> Summary() const override;

    [[nodiscard]] int RowCount() const override;
    [[nodiscard]] ListCell Cell(int row, int column) const override;
    [[nodiscard]] std::string CellTip(int row, int column) const override;
    [[nodiscard]] RowMark Mark(int row) const override;
    [[nodiscard]] RowShape Shape(int row) const override;
    void SetExpanded(int row, bool isExpanded) override;
    [[nodiscard]] std::string Key(int row) const override;
    [[nodiscard]] int FindRow(const std::string& key) const override;
    [[nodiscard]] std::optional<std::string> Program(int row) const override;

    [[nodiscard]] bool ArrangesItself() const override { return true; }
    void ArrangeBy(const RowOrder& order) override;
    [[nodiscard]] int AllRowCount() const override;

    [[nodiscard]] std::vector<ListChoice> Choices() const override;
    void Choose(int id, int item) override;

    [[nodiscard]] std::span<const ListAction> Actions() const override { return ConnectionActions::All(); }
    [[nodiscard]] bool CanDo(int action, int row) const override;
    [[nodiscard]] std::optional<ListQuestion> Question(int action, std::span<const int> rows) const override;
    void Do(int action, std::span<const int> rows) override;

    void Read(ReadReason reason) override;
    void OnHidden() override { m_reader.Close(); }

private:
    enum class State { NotRead, Unreadable, Read };
    // What a row of the list stands for: a program with its rows, or one row of the table.
    struct Place {
        const ConnectionGroup* group = nullptr;
        const ConnectionRow* row = nullptr;
    };

    [[nodiscard]] Place At(int row) const;
    [[nodiscard]] const ConnectionTable& Table() const { return *m_shown->table; }
    [[nodiscard]] const ConnectionProgram& ProgramAt(const Place& place) const;
    [[nodiscard]] std::string GroupText(const ConnectionGroup& group, ConnectionColumn column) const;
    [[nodiscard]] ConnectionTarget TargetAt(const ConnectionRow& row) const;
    void OnRead(ConnectionsReader::Snapshot snapshot);
    // Counts the rows that are shown, after groups were opened or closed.
    void PlaceGroups();

    const Parts m_parts;
    const AmountWords m_words;
    ConnectionWish m_wish;
    State m_state = State::NotRead;
    ConnectionsReader::Snapshot m_shown;       // null: nothing was read yet
    std::vector<int> m_groupStarts;            // the row of each group, and their number; empty: not grouped
    std::unordered_set<std::string> m_closed;  // programs whose rows are not shown, by path
    // The program that the user was asked about, as it was named to him.
    mutable std::optional<ConnectionTarget> m_asked;
    ConnectionActions m_actions;
    ConnectionsReader m_reader;
};

}  // namespace brennvar
