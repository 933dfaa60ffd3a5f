// Which records of a log are listed, and in what order.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "logs/LogCells.h"

namespace brennvar {

struct LogWish {
    std::optional<LogAction> action;      // of a traffic log; none: all
    std::optional<LogProtocol> protocol;  // of a packet log; none: all
    std::string searched;                 // in any cell or the program's path, without regard to ASCII case
    std::optional<LogColumn> sortedBy;    // none: as the log is read, the newest event or the first packet first
    bool isAscending = true;

    [[nodiscard]] bool ListsAll() const { return !action && !protocol && searched.empty(); }
    friend bool operator==(const LogWish&, const LogWish&) = default;
};

// Asked for every record of a log: prepared once, and quick for what does not match. Cells whose letters the
// searched text cannot be made of are not even put together.
class LogFilter {
public:
    // The texts are borrowed.
    LogFilter(const LogWish& wish, const LogTexts& texts);
    [[nodiscard]] bool Matches(const LogEntry& entry);

private:
    [[nodiscard]] bool Holds(std::string_view text) const;
    [[nodiscard]] bool IsFound(const LogEntry& entry);

    const std::optional<LogAction> m_action;
    const std::optional<LogProtocol> m_protocol;
    std::string m_searched;  // in lower case
    const LogTexts& m_texts;
    std::array<bool, kLogActionCount> m_actionHolds{};
    std::array<bool, kLogProtocolCount> m_protocolHolds{};
    bool m_mayBeTime = false;
    bool m_mayBeAddress = false;
    bool m_mayBeSize = false;  // of a packet
    std::string m_cell;        // for texts that are put together
};

}  // namespace brennvar
