// What the Connections page writes into its cells.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "config/Amounts.h"
#include "config/Language.h"
#include "config/Text.h"
#include "views/ConnectionTable.h"

namespace brennvar {

// In the order in which they are shown. The first ones never move: automation reads them by number.
enum class ConnectionColumn : std::uint8_t {
    Process,
    Address,
    State,
    RateIn,
    RateOut,
    Received,
    Sent,
    Age,
    Path,
    ProcessId,
};
inline constexpr int kConnectionColumnCount = 10;

// The text of a state in the list column; empty above 14.
[[nodiscard]] std::string_view ConnectionStateText(std::uint32_t state);
// The same in the connection's details, where state 2 is spelt with a dash.
[[nodiscard]] std::string_view ConnectionStateDetailsText(std::uint32_t state);
// What the state means, in words.
[[nodiscard]] Text ConnectionStateWords(std::uint32_t state);

// "a.b.c.d:port -> a.b.c.d:port", "<-" when incoming; listeners: local side only. Appended.
void AppendConnectionAddress(std::string& text, const ConnectionRow& row);

// "0:12", "5:07", "1:02:33"; ">" before it: at least.
[[nodiscard]] std::string FormatAge(std::uint32_t seconds, bool isAtLeast);

// Of a row that stands for one connection or listener.
[[nodiscard]] std::string ConnectionCellText(const ConnectionTable& table, const ConnectionRow& row,
                                             ConnectionColumn column, const AmountWords& words);
// A rate, or nothing when nothing flows.
[[nodiscard]] std::string RateText(std::uint64_t bytesPerSecond, const AmountWords& words);

}  // namespace brennvar
