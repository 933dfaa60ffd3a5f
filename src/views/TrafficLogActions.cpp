#include <array>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/WriteFailure.h"
#include "views/AddressActions.h"
#include "views/LogSheet.h"
#include "views/TrafficLogModel.h"

namespace brennvar {
namespace {

constexpr std::array<ListAction, 11> kActions = {
    {{TrafficLogModel::kDetails, Text{1362, "D&etails"}, ActionPlace::ButtonAndMenu, ActionRows::Focused,
      ListKey::Enter},
     {TrafficLogModel::kShowRule, Text{1674, "Show its &rule"}, ActionPlace::Menu, ActionRows::Focused},
     {TrafficLogModel::kOpenFolder, Text{1673, "Open &folder of the program"}, ActionPlace::Menu,
      ActionRows::Focused},
     kTraceRouteAction,
     kWhoIsAction,
     kLocateAction,
     kMakeRuleAction,
     kWhyAction,
     {TrafficLogModel::kExport, Text{1437, "E&xport..."}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {TrafficLogModel::kMail, Text{1808, "&Mail..."}, ActionPlace::ButtonAndMenu, ActionRows::SelectedOrAll},
     {TrafficLogModel::kDeleteLogs, Text{1217, "Delete logs..."}, ActionPlace::ButtonAndMenu, ActionRows::None,
      ListKey::None, false, true}}};

}  // namespace

std::span<const ListAction> TrafficLogModel::Actions() const {
    return kActions;
}

bool TrafficLogModel::CanDo(int action, int row) const {
    if (action == kExport || action == kMail) return RowCount() > 0 && !IsExporting();
    if (action == kDeleteLogs) return true;
    const LogRow* const entry = RowAt(row);
    if (entry == nullptr) return false;
    if (IsAddressAction(action))
        return entry->hasAddresses && CanDoAddressAction(action, entry->facts.remoteAddress);
    if (IsRuleAction(action)) return entry->hasAddresses;
    switch (action) {
        case kShowRule:
        case kOpenFolder: return !entry->path.empty();
        default: return true;
    }
}

void TrafficLogModel::Do(int action, std::span<const int> rows) {
    if (!View()) return;
    if (action == kExport) return AskForExport();
    if (action == kMail) return Mail(rows);
    if (action == kDeleteLogs) return View()->PostCommand(IDM_DELETE_LOGS);
    if (rows.empty() || !CanDo(action, rows.front())) return;
    const LogRow& entry = *RowAt(rows.front());
    TrafficFacts facts = entry.facts;
    facts.when->day = m_day;
    if (DoRuleAction(action, facts, *View())) return;
    switch (action) {
        case kDetails: return ShowDetails(m_rows.NumberOf(rows.front()));
        case kShowRule: return View()->OpenPage(IDM_APPLICATIONS, entry.path);
        case kOpenFolder: return View()->OpenFolderOf(entry.path);
        default: (void)DoAddressAction(action, facts.remoteAddress, *View()); break;
    }
}

std::string TrafficLogModel::KindName() const {
    return m_kind == LogKind::Packet ? m_parts.language.GetText(1426, "Packets")
                                     : m_parts.language.GetText(1425, "Traffic");
}

std::vector<ListChoice> TrafficLogModel::Choices() const {
    const Language& language = m_parts.language;
    ListChoice log{.id = kLogChoice,
                   .label = language.GetText(1424, "Log:"),
                   .items = {language.GetText(1425, "Traffic"), language.GetText(1426, "Packets")},
                   .chosen = m_kind == LogKind::Packet ? 1 : 0,
                   .width = 96};
    ListChoice days{
        .id = kDayChoice, .label = language.GetText(1427, "Day:"), .items = {}, .chosen = 0, .width = 136};
    for (std::size_t i = 0; i < m_days.size(); ++i) {
        days.items.push_back(TextOfDay(m_days[i], m_parts.clock.Today(), language));
        if (m_days[i] == m_day) days.chosen = static_cast<int>(i);
    }
    ListChoice filter{.id = kFilterChoice,
                      .label = language.GetText(1429, "Show:"),
                      .items = {language.GetText(1430, "All")},
                      .chosen = 0,
                      .width = 120};
    if (m_kind == LogKind::Packet) {
        for (std::size_t i = 0; i < kLogProtocolCount; ++i) {
            const auto protocol = static_cast<LogProtocol>(i);
            filter.items.push_back(protocol == LogProtocol::Any ? language.GetText(1431, "Others")
                                                                : std::string(NameOf(protocol)));
        }
        if (m_wish.protocol) filter.chosen = static_cast<int>(*m_wish.protocol) + 1;
    } else {
        filter.items.insert(filter.items.end(), m_texts->actions.begin(), m_texts->actions.end());
        if (m_wish.action) filter.chosen = static_cast<int>(*m_wish.action) + 1;
    }
    return {std::move(log), std::move(days), std::move(filter)};
}

void TrafficLogModel::Choose(int id, int item) {
    if (item < 0) return;
    const auto index = static_cast<std::size_t>(item);
    if (id == kLogChoice) {
        m_kind = item == 1 ? LogKind::Packet : LogKind::Traffic;
        m_wish.action.reset();
        m_wish.protocol.reset();
        m_dayReading.Refresh(m_kind);
        OpenLog();
        if (View()) View()->ChoicesChanged();
    } else if (id == kDayChoice && index < m_days.size()) {
        m_day = m_days[index];
        m_followsToday = m_day == m_parts.clock.Today();
        OpenLog();
    } else if (id == kFilterChoice) {
        if (m_kind == LogKind::Packet) {
            m_wish.protocol = item > 0 && index <= kLogProtocolCount
                                  ? std::optional(static_cast<LogProtocol>(item - 1))
                                  : std::nullopt;
        } else {
            m_wish.action = item > 0 && index <= kLogActionCount ? std::optional(static_cast<LogAction>(item - 1))
                                                                 : std::nullopt;
        }
        List();
    }
}

std::optional<ListProgress> TrafficLogModel::Progress() const {
    const Language& language = m_parts.language;
    if (m_writing.IsBusy()) {
        return ListProgress{
            .done = m_writing.Done(),
            .total = m_writing.Total(),
            .text = m_writing.IsCopy() ? language.GetText(1455, "Copying") : language.GetText(1454, "Exporting")};
    }
    if (m_pass == Pass::None) return std::nullopt;
    return ListProgress{.done = m_done, .total = m_total, .text = language.GetText(1453, "Reading")};
}

std::optional<ListQuestion> TrafficLogModel::LeavingQuestion() const {
    if (!IsExporting()) return std::nullopt;
    return ListQuestion{.text = m_parts.language.GetText(1466, "The log is still being exported. Stop the export?"),
                        .yes = m_parts.language.GetText(1403, "Stop")};
}

void TrafficLogModel::StopProgress() {
    if (m_writing.IsBusy()) {
        m_writing.Stop();
    } else if (m_pass == Pass::Runs) {
        m_parts.listing.RequestStop();
    } else if (m_pass == Pass::Waits) {
        Abandon();
        m_wasStopped = true;
        KeepList();
    }
    if (!View()) return;
    View()->ProgressChanged();
    View()->EmptyTextChanged();
}

void TrafficLogModel::ShowDetails(std::uint32_t number) {
    m_parts.reads.Ask<std::optional<DetailsSheet>>(
        [place = m_cache.Place(), extent = Extent(), number, day = m_day, &lookups = m_parts.lookups,
         &language = m_parts.language] { return ReadLogSheet(place, extent, number, day, lookups, language); },
        m_alive.Guard([this](std::optional<std::optional<DetailsSheet>> sheet) {
            if (View() && m_isShown && sheet && *sheet) View()->ShowSheet(**sheet);
        }));
}

std::optional<LogExtent> TrafficLogModel::Extent() const {
    return m_extent || !m_kept ? m_extent : std::optional(m_kept->extent);
}

LogSelection TrafficLogModel::Selection() const {
    return {.place = m_cache.Place(),
            .extent = Extent(),
            .count = static_cast<std::size_t>(RowCount()),
            .numberAt = m_rows.Snapshot()};
}

bool TrafficLogModel::TellExporting() {
    if (!IsExporting()) return false;
    const Language& language = m_parts.language;
    View()->Tell(language.GetText(1456, "Export the log"),
                 language.GetText(1467, "An export is under way. Please wait until it has ended."));
    return true;
}

void TrafficLogModel::AskForExport() {
    if (TellExporting()) return;
    const Language& language = m_parts.language;
    // As they are now: the list may go on while the user is asked.
    LogSelection selection = Selection();
    const auto place = View()->AskSavePlace(
        {.title = language.GetText(1456, "Export the log"),
         .name = LogName(),
         .types = {{.label = language.GetText(1457, "CSV (comma separated)"), .extension = "csv"},
                   {.label = language.GetText(1458, "Text (tab separated)"), .extension = "txt"}}});
    // While it asked, the user can have begun another one.
    if (!place || !View() || TellExporting()) return;
    m_writing.Export(std::move(selection), place->path, place->type == 1 ? LogFormat::Text : LogFormat::Csv);
    if (View()) View()->ProgressChanged();
    ScheduleWake();
}

bool TrafficLogModel::Copy(const RowRanges& rows) {
    if (!View() || rows.IsEmpty() || TellExporting()) return true;
    if (rows.Count() > static_cast<std::int64_t>(kMostCopied)) {
        View()->Tell(
            m_parts.language.GetText(1459, "Copy"),
            m_parts.language.GetText(1460, "These are too many rows for the clipboard. Export them instead."));
        return true;
    }
    std::vector<std::uint32_t> numbers;
    for (const RowRanges::Range& range : rows.Ranges()) {
        for (int row = range.first; row <= range.last && row < RowCount(); ++row) {
            numbers.push_back(m_rows.NumberOf(row));
        }
    }
    m_writing.Copy(SelectionOf(std::move(numbers)));
    ScheduleWake();
    return true;
}

LogSelection TrafficLogModel::SelectionOf(std::vector<std::uint32_t> numbers) const {
    const std::size_t count = numbers.size();
    return {.place = m_cache.Place(),
            .extent = Extent(),
            .count = count,
            .numberAt = [numbers = std::move(numbers)](std::size_t i) { return numbers[i]; }};
}

void TrafficLogModel::Mail(std::span<const int> rows) {
    if (TellExporting()) return;
    std::vector<std::uint32_t> numbers;
    numbers.reserve(rows.size());
    for (const int row : rows) {
        if (row < RowCount()) numbers.push_back(m_rows.NumberOf(row));
    }
    // A name that no other mail has, of this program or of another user's.
    m_mailPath = m_parts.temporaryFolder + "brennvar-mail-" + std::to_string(m_parts.clock.UtcNow()) + ".csv";
    m_mailName = LogName();  // another one may be chosen while it is written
    m_writing.Export(rows.empty() ? Selection() : SelectionOf(std::move(numbers)), m_mailPath, LogFormat::Csv);
    if (View()) View()->ProgressChanged();
    ScheduleWake();
}

void TrafficLogModel::TellFinished(const LogWriting::Finished& finished) {
    if (!View() || finished.state->wasStopped) return;
    if (finished.isCopy) {
        // Of a log that is gone nothing is copied; the clipboard keeps what it has.
        if (!finished.state->text.empty()) View()->CopyText(finished.state->text);
        return;
    }
    const Language& language = m_parts.language;
    const bool goesByMail = finished.path == m_mailPath && finished.state->result == WriteResult::Written;
    if (goesByMail) {
        m_parts.mail.OpenMailForm({.path = finished.path,
                                   .name = m_mailName + ".csv",
                                   .contentType = "text/csv",
                                   .subject = m_mailName,
                                   .isTemporary = true});
        if (finished.state->missing == 0) return;  // else the form comes behind what is told
    }
    std::string text;
    if (goesByMail) {
        text = language.GetText(1819, "Not all entries could be attached.");
    } else if (finished.state->result == WriteResult::Written) {
        text = language.GetText(1461, "The log has been exported to this file:") + '\n' + finished.path;
    } else {
        text = DescribeWriteFailure(finished.state->result, finished.path, language);
    }
    if (finished.state->missing > 0) {
        text += '\n' + language.GetText(1465, "Entries that were deleted meanwhile are missing:") + ' ' +
                std::to_string(finished.state->missing);
    }
    View()->Tell(language.GetText(1456, "Export the log"), text);
}

}  // namespace brennvar
