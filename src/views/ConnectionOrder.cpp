#include "views/ConnectionOrder.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/AsciiCase.h"
#include "base/DisplayName.h"
#include "base/RadixSort.h"

namespace brennvar {
namespace {

using Column = ConnectionColumn;

void Fold(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), &AsciiLower);
}

bool PassesFilter(const ConnectionRow& row, ConnectionFilter filter) {
    switch (filter) {
        case ConnectionFilter::Established: return row.IsEstablished();
        case ConnectionFilter::Listening: return row.IsListener();
        default: return true;
    }
}

// Looks for a text in rows. What many rows have in common is looked into once.
class Searcher {
public:
    Searcher(const ConnectionTable& table, std::string searched) : m_searched(std::move(searched)) {
        Fold(m_searched);
        m_isInProgram.reserve(table.Programs().size());
        for (const ConnectionProgram& program : table.Programs()) {
            m_isInProgram.push_back(Holds(program.name) || Holds(OneLine(program.path)));
        }
        for (std::uint32_t state = 0; state < m_isInState.size(); ++state) {
            m_isInState[state] = Holds(std::string(ConnectionStateText(state)));
        }
        m_mayBeAddress = m_searched.find_first_not_of("0123456789.:<>- ") == std::string::npos;
    }

    [[nodiscard]] bool Finds(const ConnectionRow& row) {
        if (m_isInProgram[row.program] || m_isInState[row.state]) return true;
        if (!m_mayBeAddress) return false;
        m_text.clear();
        AppendConnectionAddress(m_text, row);
        m_text += '\0';  // nobody can type it: what is found does not reach from one cell into the next
        AppendNumber(m_text, row.processId);
        return m_text.find(m_searched) != std::string::npos;
    }

private:
    [[nodiscard]] bool Holds(std::string text) const {
        Fold(text);
        return text.find(m_searched) != std::string::npos;
    }

    std::string m_searched;
    std::vector<bool> m_isInProgram;
    std::array<bool, kStateListenOther + 1> m_isInState{};
    bool m_mayBeAddress = false;
    std::string m_text;
};

// A row's place among the others in a column, as a number.
std::uint32_t SortNumberOf(const ConnectionTable& table, const ConnectionRow& row, Column column) {
    switch (column) {
        case Column::Process: return table.ProgramOf(row).nameRank;
        case Column::State: return row.state;
        case Column::RateIn: return row.rateIn;
        case Column::RateOut: return row.rateOut;
        case Column::Received: return row.bytesIn;
        case Column::Sent: return row.bytesOut;
        case Column::Age: return table.AgeOf(row);
        case Column::Path: return table.ProgramOf(row).pathRank;
        case Column::ProcessId: return row.processId;
        case Column::Address: break;  // more than a number
    }
    return 0;
}

// What a row is sorted by, and the row: the sort needs to look at nothing else, and leaves equal rows as they are.
struct NumberedRow {
    std::uint32_t number;
    std::uint32_t row;
};

void SortByNumber(const ConnectionTable& table, LargeVector<std::uint32_t>& rows, Column column, bool isAscending) {
    LargeVector<NumberedRow> numbered(rows.size());
    LargeVector<NumberedRow> room;
    std::transform(rows.begin(), rows.end(), numbered.begin(), [&](std::uint32_t row) {
        const std::uint32_t number = SortNumberOf(table, table.Row(row), column);
        return NumberedRow{.number = isAscending ? number : ~number, .row = row};
    });
    RadixSort(numbered, room, [](const NumberedRow& row) { return std::uint64_t{row.number}; });
    std::transform(numbered.begin(), numbered.end(), rows.begin(), [](const NumberedRow& row) { return row.row; });
}

void SortByAddress(const ConnectionTable& table, LargeVector<std::uint32_t>& rows, bool isAscending) {
    struct Ends {
        std::uint64_t local;
        std::uint64_t remote;
        std::uint32_t row;
    };
    const auto number = [isAscending](Ipv4 address, std::uint16_t port) {
        const std::uint64_t end = std::uint64_t{SwapAddress(address)} << 16 | port;
        return isAscending ? end : ~end;
    };
    LargeVector<Ends> ends(rows.size());
    LargeVector<Ends> room;
    std::transform(rows.begin(), rows.end(), ends.begin(), [&](std::uint32_t at) {
        const ConnectionRow& row = table.Row(at);
        return Ends{.local = number(row.localAddress, row.localPort),
                    .remote = number(row.remoteAddress, row.remotePort),
                    .row = at};
    });
    RadixSort(ends, room, [](const Ends& row) { return row.remote; });
    RadixSort(ends, room, [](const Ends& row) { return row.local; });
    std::transform(ends.begin(), ends.end(), rows.begin(), [](const Ends& row) { return row.row; });
}

void AddToGroup(ConnectionGroup& group, const ConnectionTable& table, const ConnectionRow& row) {
    if (group.count == 0) group.processId = row.processId;
    group.hasSeveralProcesses |= group.processId != row.processId;
    ++group.count;
    if (row.mark != RowMark::Gone) {
        group.bytesIn += row.bytesIn;
        group.bytesOut += row.bytesOut;
        group.rateIn += row.rateIn;
        group.rateOut += row.rateOut;
    }
    const std::uint32_t age = table.AgeOf(row);
    if (group.count == 1 || age > group.age || (age == group.age && row.isOlder)) {
        group.age = age;
        group.isOlder = row.isOlder;
    }
}

std::uint64_t SortNumberOf(const ConnectionTable& table, const ConnectionGroup& group, int column) {
    switch (column == RowOrder::kAsRead ? Column::Process : static_cast<Column>(column)) {
        case Column::RateIn: return group.rateIn;
        case Column::RateOut: return group.rateOut;
        case Column::Received: return group.bytesIn;
        case Column::Sent: return group.bytesOut;
        case Column::Age: return group.age;
        case Column::Path: return table.Programs()[group.program].pathRank;
        case Column::ProcessId: return group.hasSeveralProcesses ? 0 : group.processId;
        case Column::Address: return group.count;  // which is what the cell says
        default: return table.Programs()[group.program].nameRank;
    }
}

// Puts the rows of one program together, in the order that they have.
void Group(ArrangedConnections& arranged, const RowOrder& order) {
    const ConnectionTable& table = *arranged.table;
    std::vector<ConnectionGroup> groups(table.Programs().size());
    for (const std::uint32_t row : arranged.rows) {
        AddToGroup(groups[table.Row(row).program], table, table.Row(row));
    }
    std::vector<std::uint32_t> sorted;
    for (std::uint32_t program = 0; program < groups.size(); ++program) {
        groups[program].program = program;
        if (groups[program].count > 0) sorted.push_back(program);
    }
    const bool isAscending = order.column == RowOrder::kAsRead || order.isAscending;
    std::sort(sorted.begin(), sorted.end(), [&](std::uint32_t left, std::uint32_t right) {
        const std::uint64_t leftNumber = SortNumberOf(table, groups[left], order.column);
        const std::uint64_t rightNumber = SortNumberOf(table, groups[right], order.column);
        if (leftNumber != rightNumber) return isAscending ? leftNumber < rightNumber : rightNumber < leftNumber;
        return table.Programs()[left].nameRank < table.Programs()[right].nameRank;
    });
    std::uint32_t first = 0;
    for (const std::uint32_t program : sorted) {
        groups[program].first = first;
        first += groups[program].count;
        arranged.groups.push_back(groups[program]);
    }
    std::vector<std::uint32_t> next(groups.size());
    arranged.groupOfProgram.assign(groups.size(), ArrangedConnections::kNoPlace);
    for (std::uint32_t number = 0; number < arranged.groups.size(); ++number) {
        const ConnectionGroup& group = arranged.groups[number];
        next[group.program] = group.first;
        arranged.groupOfProgram[group.program] = number;
    }
    LargeVector<std::uint32_t> rows(arranged.rows.size());
    for (const std::uint32_t row : arranged.rows) rows[next[table.Row(row).program]++] = row;
    arranged.rows = std::move(rows);
}

}  // namespace

ArrangedConnections ArrangeConnections(std::shared_ptr<const ConnectionTable> table, const ConnectionWish& wish) {
    ArrangedConnections arranged;
    arranged.rows = table->OrderAsRead();
    if (wish.filter != ConnectionFilter::All) {
        std::erase_if(arranged.rows,
                      [&](std::uint32_t row) { return !PassesFilter(table->Row(row), wish.filter); });
    }
    arranged.filtered = arranged.rows.size();
    if (!wish.order.searched.empty()) {
        Searcher searcher(*table, wish.order.searched);
        std::erase_if(arranged.rows, [&](std::uint32_t row) { return !searcher.Finds(table->Row(row)); });
    }
    if (wish.order.column == static_cast<int>(Column::Address)) {
        SortByAddress(*table, arranged.rows, wish.order.isAscending);
    } else if (wish.order.column != RowOrder::kAsRead) {
        SortByNumber(*table, arranged.rows, static_cast<Column>(wish.order.column), wish.order.isAscending);
    }
    arranged.table = std::move(table);
    arranged.isGrouped = wish.isGrouped;
    if (wish.isGrouped) Group(arranged, wish.order);
    arranged.places.assign(arranged.table->Rows().size(), ArrangedConnections::kNoPlace);
    for (std::uint32_t place = 0; place < arranged.rows.size(); ++place) {
        arranged.places[arranged.rows[place]] = place;
    }
    return arranged;
}

}  // namespace brennvar
