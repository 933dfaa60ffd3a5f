// Which rows of a connection table are shown, and in what order: those that the user has chosen and that hold what
// he looks for, sorted, and below their programs where he wants that. Made on the reading thread, with numbers
// where texts of 393,216 rows would take too long.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "base/LargeVector.h"
#include "lists/RowOrder.h"
#include "views/ConnectionTable.h"
#include "views/ConnectionTexts.h"

namespace brennvar {

enum class ConnectionFilter : std::uint8_t { All, Established, Listening };

struct ConnectionWish {
    RowOrder order;  // by a number of ConnectionColumn; searched: name, address, state, path and process id
    ConnectionFilter filter = ConnectionFilter::All;
    bool isGrouped = false;
};

// A program with its rows.
struct ConnectionGroup {
    std::uint32_t program = 0;
    std::uint32_t first = 0;  // of ArrangedConnections::rows
    std::uint32_t count = 0;  // of its rows; at least one
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
    std::uint64_t rateIn = 0;
    std::uint64_t rateOut = 0;
    std::uint32_t processId = 0;  // when it is one
    bool hasSeveralProcesses = false;
    std::uint32_t age = 0;  // of its oldest row, seconds
    bool isOlder = false;   // of that row
};

struct ArrangedConnections {
    std::shared_ptr<const ConnectionTable> table;
    LargeVector<std::uint32_t> rows;      // of the table
    std::vector<ConnectionGroup> groups;  // empty: not grouped
    bool isGrouped = false;
    std::size_t filtered = 0;  // rows without the search

    static constexpr std::uint32_t kNoPlace = 0xFFFFFFFF;
    LargeVector<std::uint32_t> places;          // of each row of the table in rows; kNoPlace: not shown
    std::vector<std::uint32_t> groupOfProgram;  // numbers of groups; kNoPlace: none. Empty when not grouped
};

// In the order of the driver's tables unless the user sorts. Equal rows stay in that order; groups are sorted by
// what their rows come to, and by name where that says nothing.
[[nodiscard]] ArrangedConnections ArrangeConnections(std::shared_ptr<const ConnectionTable> table,
                                                     const ConnectionWish& wish);

}  // namespace brennvar
