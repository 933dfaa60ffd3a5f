#include "views/ConnectionsModel.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/DisplayName.h"
#include "config/ResourceIds.h"
#include "views/AddressActions.h"

namespace brennvar {
namespace {

using Column = ConnectionColumn;

// The keys of rows, which no user sees.
constexpr char kGroupKey = 'g';  // and the path
constexpr char kRowKey = 'r';    // and the bytes of a ConnectionKey
static_assert(std::is_trivially_copyable_v<ConnectionKey> && sizeof(ConnectionKey) == 24);

CellGlyph GlyphOf(const ConnectionRow& row) {
    if (row.IsListener()) return CellGlyph::Bar;
    return row.IsEstablished() ? CellGlyph::Filled : CellGlyph::Hollow;
}

}  // namespace

ConnectionsModel::ConnectionsModel(const Parts& parts)
    : m_parts(parts),
      m_words(parts.language),
      m_actions(
          {.language = parts.language,
           .commander = parts.commander,
           .reads = parts.reads,
           .options = parts.options,
           .clock = parts.clock,
           .lookups = parts.lookups,
           .blocked = parts.blocked},
          [this](std::uint32_t processId) { return m_shown ? Table().PathOfProcess(processId) : std::nullopt; }),
      m_reader({.tables = parts.tables,
                .reads = parts.driverReads,
                .link = parts.link,
                .programQueue = parts.programQueue,
                .programFiles = parts.programFiles},
               parts.language.GetText(313, "no process associated"),
               [this](ConnectionsReader::Snapshot snapshot) { OnRead(std::move(snapshot)); }) {
    std::uint32_t stored = 0;
    if (parts.userValues.ReadUserValue(kUserValueConnectionsFilter, stored) &&
        stored <= static_cast<std::uint32_t>(ConnectionFilter::Listening)) {
        m_wish.filter = static_cast<ConnectionFilter>(stored);
    }
    stored = 0;
    (void)parts.userValues.ReadUserValue(kUserValueConnectionsGrouped, stored);  // none: not grouped
    m_wish.isGrouped = stored != 0;
    m_reader.Arrange(m_wish);
}

std::vector<ListColumn> ConnectionsModel::Columns() const {
    const Language& language = m_parts.language;
    std::vector<std::string> states;
    for (std::uint32_t state = 0; !ConnectionStateText(state).empty(); ++state) {
        states.emplace_back(ConnectionStateText(state));
    }
    // What the numbers mostly take: with room for it the columns stay as they are.
    const std::string rate = FormatRate(1000 * 1024, 1000, m_words);
    const std::string bytes = FormatBytes(1000 * 1024, m_words);
    // A narrow list does without the numbers first, and last of all without where the program lies.
    enum Yields { kNever, kAmounts, kProcessId, kAge, kRates };
    const auto amount = [&](Text title, const std::string& longest, int yields) {
        return ListColumn{.title = language.GetText(title),
                          .width = 64,
                          .isNumber = true,
                          .yields = yields,
                          .longest = {longest}};
    };
    return {{.title = language.GetText(1020, "Process"), .width = 104},
            {.title = language.GetText(1021, "Address"), .width = 200},
            {.title = language.GetText(1022, "State"), .width = 96, .longest = std::move(states)},
            amount(Text{1660, "Rate in"}, rate, kRates),
            amount(Text{1661, "Rate out"}, rate, kRates),
            amount(Text{1662, "Received"}, bytes, kAmounts),
            amount(Text{1663, "Sent"}, bytes, kAmounts),
            {.title = language.GetText(1664, "Age"),
             .width = 48,
             .isNumber = true,
             .yields = kAge,
             .longest = {FormatAge(0, true)}},
            {.title = language.GetText(1026, "Path"), .width = 96, .takesRoom = true, .isPath = true},
            {.title = language.GetText(1023, "PID"), .width = 48, .isNumber = true, .yields = kProcessId}};
}

std::string ConnectionsModel::EmptyText() const {
    const Language& language = m_parts.language;
    switch (m_state) {
        case State::NotRead:
            return language.GetText(1018,
                                    "Reading the connections. This takes longer while the firewall service is "
                                    "not reachable.");
        case State::Unreadable:
            return language.GetText(1017,
                                    "The connections cannot be read: the firewall driver is not "
                                    "reachable. The list fills by itself when it is.");
        default: break;
    }
    // Below programs the list counts no rows that are not shown, and leaves it to the page to say so.
    if (!m_wish.order.searched.empty() && m_shown->filtered > 0) {
        return language.GetText(1047, "No entry contains this text.");
    }
    if (m_wish.filter != ConnectionFilter::All && !Table().Rows().empty()) {
        return language.GetText(1688, "There are no such connections now.");
    }
    return language.GetText(1016, "There are no connections and no listening ports.");
}

std::optional<std::string> ConnectionsModel::Summary() const {
    if (m_state != State::Read) return std::nullopt;
    const Language& language = m_parts.language;
    const ConnectionSummary& sum = Table().Summary();
    std::string text = language.GetText(1007, "Connections:") + " " + FormatCount(sum.connections) + ", " +
                       language.GetText(1680, "programs:") + " " + FormatCount(sum.programs) + ", " +
                       language.GetText(1682, "listening:") + " " + FormatCount(sum.listeners);
    if (sum.busiestRate > 0) {
        text += "; " + language.GetText(1683, "most:") + " " + Table().Programs()[sum.busiest].name + " " +
                FormatRate(sum.busiestRate, 1000, m_words);
    }
    return text;
}

void ConnectionsModel::PlaceGroups() {
    m_groupStarts.clear();
    if (!m_shown || !m_shown->isGrouped) return;
    int start = 0;
    for (const ConnectionGroup& group : m_shown->groups) {
        m_groupStarts.push_back(start);
        const bool isOpen = !m_closed.contains(Table().Programs()[group.program].path);
        start += 1 + (isOpen ? static_cast<int>(group.count) : 0);
    }
    m_groupStarts.push_back(start);
}

int ConnectionsModel::RowCount() const {
    if (!m_shown) return 0;
    return m_shown->isGrouped ? m_groupStarts.back() : static_cast<int>(m_shown->rows.size());
}

int ConnectionsModel::AllRowCount() const {
    // With programs among them the rows are of two kinds, which nobody counts together.
    if (!m_shown || m_shown->isGrouped) return RowCount();
    return static_cast<int>(m_shown->filtered);
}

ConnectionsModel::Place ConnectionsModel::At(int row) const {
    if (!m_shown->isGrouped) return {.row = &Table().Row(m_shown->rows[static_cast<std::size_t>(row)])};
    const auto behind = std::upper_bound(m_groupStarts.begin(), m_groupStarts.end(), row);
    const auto number = static_cast<std::size_t>(behind - m_groupStarts.begin()) - 1;
    const ConnectionGroup& group = m_shown->groups[number];
    const int inGroup = row - m_groupStarts[number];
    if (inGroup == 0) return {.group = &group};
    return {.row = &Table().Row(m_shown->rows[group.first + static_cast<std::size_t>(inGroup) - 1])};
}

const ConnectionProgram& ConnectionsModel::ProgramAt(const Place& place) const {
    return Table().Programs()[place.group ? place.group->program : place.row->program];
}

ListCell ConnectionsModel::Cell(int row, int column) const {
    const Place place = At(row);
    const auto which = static_cast<Column>(column);
    if (place.group) return {.text = GroupText(*place.group, which)};
    ListCell cell{.text = ConnectionCellText(Table(), *place.row, which, m_words)};
    if (place.row->mark == RowMark::Gone) cell.tone = Tone::Muted;
    if (which == Column::State) cell.glyph = GlyphOf(*place.row);
    return cell;
}

std::string ConnectionsModel::GroupText(const ConnectionGroup& group, Column column) const {
    const ConnectionProgram& program = Table().Programs()[group.program];
    const auto amount = [this](std::uint64_t bytes) { return bytes == 0 ? "" : FormatBytes(bytes, m_words); };
    switch (column) {
        case Column::Process: return program.name;
        case Column::Address: return m_parts.language.GetText(1048, "Entries:") + " " + FormatCount(group.count);
        case Column::State: return {};
        case Column::RateIn: return RateText(group.rateIn, m_words);
        case Column::RateOut: return RateText(group.rateOut, m_words);
        case Column::Received: return amount(group.bytesIn);
        case Column::Sent: return amount(group.bytesOut);
        case Column::Age: return FormatAge(group.age, group.isOlder);
        case Column::Path: return OneLine(program.path);
        case Column::ProcessId: return group.hasSeveralProcesses ? "" : std::to_string(group.processId);
    }
    return {};
}

std::string ConnectionsModel::CellTip(int row, int column) const {
    const Place place = At(row);
    const Language& language = m_parts.language;
    // The rate as well, whose own column a narrow list leaves out.
    const auto bytes = [&](std::uint64_t number, std::uint64_t rate) {
        const std::string text = FormatCount(number) + " " + language.GetText(1679, "bytes");
        return rate == 0 ? text : text + ", " + RateText(rate, m_words);
    };
    const bool isCounted = place.group || !place.row->IsListener();
    switch (static_cast<Column>(column)) {
        case Column::Process: return OneLine(ProgramAt(place).path);
        case Column::State: return place.row ? language.GetText(ConnectionStateWords(place.row->state)) : "";
        case Column::Received:
            if (!isCounted) return {};
            return place.group ? bytes(place.group->bytesIn, place.group->rateIn)
                               : bytes(place.row->bytesIn, place.row->rateIn);
        case Column::Sent:
            if (!isCounted) return {};
            return place.group ? bytes(place.group->bytesOut, place.group->rateOut)
                               : bytes(place.row->bytesOut, place.row->rateOut);
        case Column::Age:
            return (place.group ? place.group->isOlder : place.row->isOlder)
                       ? language.GetText(1678, "It was there already when the page was opened.")
                       : "";
        default: return {};
    }
}

RowMark ConnectionsModel::Mark(int row) const {
    const Place place = At(row);
    return place.row ? place.row->mark : RowMark::None;
}

RowShape ConnectionsModel::Shape(int row) const {
    if (!m_shown->isGrouped) return {};
    const Place place = At(row);
    if (place.row) return {.level = 1};
    return {.level = 0, .hasChildren = true, .isExpanded = !m_closed.contains(ProgramAt(place).path)};
}

void ConnectionsModel::SetExpanded(int row, bool isExpanded) {
    const Place place = At(row);
    if (!place.group) return;
    const std::string& path = ProgramAt(place).path;
    if (isExpanded) {
        m_closed.erase(path);
    } else {
        m_closed.insert(path);
    }
    PlaceGroups();
}

std::string ConnectionsModel::Key(int row) const {
    const Place place = At(row);
    if (place.group) return kGroupKey + ProgramAt(place).path;
    const ConnectionKey key = KeyOf(*place.row);
    std::string text(1 + sizeof key, kRowKey);
    std::memcpy(text.data() + 1, &key, sizeof key);
    return text;
}

int ConnectionsModel::FindRow(const std::string& key) const {
    if (!m_shown || key.empty()) return -1;
    constexpr std::uint32_t kNoPlace = ArrangedConnections::kNoPlace;
    if (key.front() == kGroupKey) {
        if (!m_shown->isGrouped) return -1;
        const std::uint32_t program = Table().FindProgram(key.substr(1));
        if (Table().Programs()[program].path != std::string_view(key).substr(1)) return -1;
        const std::uint32_t group = m_shown->groupOfProgram[program];
        return group == kNoPlace ? -1 : m_groupStarts[group];
    }
    ConnectionKey wanted;
    if (key.front() != kRowKey || key.size() != 1 + sizeof wanted) return -1;
    std::memcpy(&wanted, key.data() + 1, sizeof wanted);
    const std::uint32_t row = Table().Find(wanted);
    const std::uint32_t place = row == ConnectionTable::kNoRow ? kNoPlace : m_shown->places[row];
    if (place == kNoPlace) return -1;
    if (!m_shown->isGrouped) return static_cast<int>(place);
    const std::uint32_t group = m_shown->groupOfProgram[Table().Row(row).program];
    const int inGroup = static_cast<int>(place - m_shown->groups[group].first);
    const bool isOpen = m_groupStarts[group + 1] - m_groupStarts[group] > 1;
    return isOpen ? m_groupStarts[group] + 1 + inGroup : -1;
}

std::optional<std::string> ConnectionsModel::Program(int row) const {
    const Place place = At(row);
    // Below its program a row needs no picture of it.
    if (m_shown->isGrouped && place.row) return std::nullopt;
    return ProgramAt(place).path;
}

void ConnectionsModel::ArrangeBy(const RowOrder& order) {
    m_wish.order = order;
    m_reader.Arrange(m_wish);
}

std::vector<ListChoice> ConnectionsModel::Choices() const {
    const Language& language = m_parts.language;
    return {{.id = IDC_CONNECTIONS_FILTER,
             .label = language.GetText(1665, "Show:"),
             .items = {language.GetText(1666, "All"), language.GetText(1667, "Established"),
                       language.GetText(1668, "Listening")},
             .chosen = static_cast<int>(m_wish.filter),
             .width = 128},
            {.id = IDC_CONNECTIONS_GROUPED,
             .label = language.GetText(1669, "Group by program"),
             .chosen = m_wish.isGrouped ? 1 : 0}};
}

void ConnectionsModel::Choose(int id, int item) {
    const auto number = static_cast<std::uint32_t>(item);
    if (id == IDC_CONNECTIONS_FILTER && item >= 0 && item <= static_cast<int>(ConnectionFilter::Listening)) {
        m_wish.filter = static_cast<ConnectionFilter>(item);
        (void)m_parts.userValues.WriteUserValue(kUserValueConnectionsFilter, number);  // else it is forgotten
    } else if (id == IDC_CONNECTIONS_GROUPED) {
        m_wish.isGrouped = item != 0;
        (void)m_parts.userValues.WriteUserValue(kUserValueConnectionsGrouped, number);
    }
    m_reader.Arrange(m_wish);
}

ConnectionTarget ConnectionsModel::TargetAt(const ConnectionRow& row) const {
    return {.row = row, .program = Table().ProgramOf(row), .age = Table().AgeOf(row)};
}

bool ConnectionsModel::CanDo(int action, int row) const {
    if (row < 0) return true;  // the tools, which need none
    const Place place = At(row);
    if (place.row) return ConnectionActions::CanDo(action, TargetAt(*place.row));
    // A program as a whole has a file, but neither ends nor one process.
    const bool isForProgram = action == IDC_CONNECTIONS_FOLDER || action == IDC_CONNECTIONS_RULE;
    return isForProgram && !ProgramAt(place).path.empty();
}

std::optional<ListQuestion> ConnectionsModel::Question(int action, std::span<const int> rows) const {
    if (action != IDC_CONNECTIONS_TERMINATE || rows.empty() || !CanDo(action, rows.front())) return std::nullopt;
    m_asked = TargetAt(*At(rows.front()).row);
    return m_actions.TerminateQuestion(*m_asked);
}

void ConnectionsModel::Do(int action, std::span<const int> rows) {
    if (!View()) return;
    if (rows.empty()) return (void)DoAddressAction(action, 0, *View());
    if (!CanDo(action, rows.front())) return;
    const Place place = At(rows.front());
    // Of a program as a whole only its path counts.
    const ConnectionTarget target =
        place.row ? TargetAt(*place.row) : ConnectionTarget{.row = {}, .program = ProgramAt(place), .age = 0};
    if (action == IDC_CONNECTIONS_TERMINATE) {
        // The list went on while the user was asked: only what was named to him is ended.
        const auto asked = std::exchange(m_asked, std::nullopt);
        if (!asked || asked->row.processId != target.row.processId || asked->program.path != target.program.path) {
            return;
        }
    }
    m_actions.Do(action, target, *View());
}

void ConnectionsModel::Read(ReadReason reason) {
    if (reason == ReadReason::RulesChanged || reason == ReadReason::LogsDeleted) return;  // nothing of this page
    if (reason == ReadReason::Wished) return m_reader.Refresh();
    m_reader.Open();
}

void ConnectionsModel::OnRead(ConnectionsReader::Snapshot snapshot) {
    m_state = snapshot ? State::Read : State::Unreadable;
    if (!snapshot) {
        // The rows stay as they were.
        if (View()) View()->EmptyTextChanged();
        if (View()) View()->SummaryChanged();
        return;
    }
    ConnectionsReader::Snapshot old;
    ChangeRows([&] {
        old = std::exchange(m_shown, std::move(snapshot));
        PlaceGroups();
        return ListView::Change::Rows;
    });
    if (View()) View()->SummaryChanged();
    // With full tables it takes long to give back the memory.
    if (old) m_parts.driverReads.Post([old = std::move(old)] {});
}

}  // namespace brennvar
