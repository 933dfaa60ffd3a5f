// What the page says of the log as a whole: its columns, why it is empty, what happened in short.
#include <array>
#include <utility>

#include "config/Amounts.h"
#include "views/TrafficLogModel.h"

namespace brennvar {

std::vector<ListColumn> TrafficLogModel::Columns() const {
    std::vector<std::string> protocols;
    for (std::size_t i = 0; i < kLogProtocolCount; ++i) {
        protocols.emplace_back(NameOf(static_cast<LogProtocol>(i)));
    }
    const auto title = [&](LogColumn column) { return m_texts->columns[static_cast<std::size_t>(column)]; };
    return {{.title = title(LogColumn::Time), .width = 72, .longest = {"00:00:00"}},
            {.title = title(LogColumn::Action),
             .width = 80,
             .longest = {m_texts->actions.begin(), m_texts->actions.end()}},
            {.title = title(LogColumn::Protocol), .width = 64, .longest = std::move(protocols)},
            {.title = title(LogColumn::Address), .width = 200},
            {.title = title(LogColumn::Program), .width = 112, .hasIcon = true},
            {.title = title(LogColumn::Remark), .width = 96, .takesRoom = true}};
}

std::string TrafficLogModel::EmptyText() const {
    if (m_pass != Pass::None || (!m_extent && !m_wasStopped)) {
        return m_parts.language.GetText(1441, "Reading the log.");
    }
    if (m_wasStopped) {
        return m_parts.language.GetText(1442, "Reading the log was stopped before anything was found.");
    }
    if (m_tally.count > 0) {
        return m_parts.language.GetText(1443, "Nothing in this log matches what is searched for and shown.");
    }
    return m_parts.language.GetText(1440,
                                    "Nothing was logged on this day. What is logged is chosen on the Options page, "
                                    "under Logging.");
}

std::optional<std::string> TrafficLogModel::Summary() const {
    if (m_tally.count == 0) return std::nullopt;
    const Language& language = m_parts.language;
    std::string text;
    const auto add = [&](std::uint64_t count, const std::string& word) {
        if (count == 0) return;
        if (!text.empty()) text += ", ";
        text += FormatCount(count) + ' ' + word;
    };
    if (m_kind == LogKind::Packet) {
        add(m_tally.count, language.GetText(1450, "packets"));
    } else {
        const std::array<std::string, kLogActionCount> words = {
            language.GetText(1445, "allowed"), language.GetText(1446, "denied"), language.GetText(1447, "asked"),
            language.GetText(1448, "disconnected"), language.GetText(1449, "messages")};
        for (std::size_t i = 0; i < kLogActionCount; ++i) add(m_tally.actions[i], words[i]);
    }
    LogEntry last;
    last.hour = m_tally.lastSecond / 3600;
    last.minute = m_tally.lastSecond / 60 % 60;
    last.second = m_tally.lastSecond % 60;
    text += "; " + language.GetText(1451, "last at") + ' ';
    AppendTime(text, last);
    if (m_wasStopped) text += "; " + language.GetText(1452, "not read to the end");
    return text;
}

}  // namespace brennvar
