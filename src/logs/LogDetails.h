// What the details dialogs tell of a logged event and of a logged packet.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "logs/LogNames.h"
#include "logs/LogRecords.h"

namespace brennvar {

[[nodiscard]] DetailsSheet DescribeLogRecord(const TrafficLogRecord& record, const LogNames& names,
                                             const Language& language);

// captured: the bytes that follow the header, as many as could be read.
[[nodiscard]] DetailsSheet DescribePacket(const PacketLogHeader& header, std::span<const std::byte> captured,
                                          const LogNames& names, const Language& language);

}  // namespace brennvar
