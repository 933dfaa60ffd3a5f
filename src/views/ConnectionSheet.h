// What the details of a connection say.
#pragma once

#include <cstdint>
#include <string>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "logs/LogNames.h"
#include "views/ConnectionTable.h"

namespace brennvar {

// A row of the page by itself: it stays when the table has gone.
struct ConnectionTarget {
    ConnectionRow row;
    ConnectionProgram program;
    std::uint32_t age = 0;  // seconds
};

// names: null while they are looked up. Of a listener only the local ones count.
[[nodiscard]] DetailsSheet ConnectionDetails(const Language& language, const ConnectionTarget& target,
                                             const LogNames* names);

}  // namespace brennvar
