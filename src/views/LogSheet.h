// What the details of a log entry say; read from the log, and from the logs of names, on a queue's thread.
#pragma once

#include <cstdint>
#include <optional>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "logs/LogListing.h"
#include "logs/Lookups.h"

namespace brennvar {

// Nothing: the log does not have the entry any more. extent: of the list that numbers
// it, where that is known. day: that of the log.
[[nodiscard]] std::optional<DetailsSheet> ReadLogSheet(const LogPlace& place,
                                                       const std::optional<LogExtent>& extent, std::uint32_t number,
                                                       LocalDate day, LogLookups& lookups,
                                                       const Language& language);

}  // namespace brennvar
