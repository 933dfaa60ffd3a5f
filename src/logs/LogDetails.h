// What the details dialogs tell of a logged event and of a logged packet.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "logs/LogRecords.h"

namespace brennvar {

// What the other logs know of a record's addresses; empty: unknown.
struct LogNames {
    std::string localName;
    std::string remoteName;
    std::string localHardware;
    std::string remoteHardware;
};

[[nodiscard]] DetailsSheet DescribeLogRecord(const TrafficLogRecord& record, const LogNames& names,
                                             const Language& language);

// captured: the bytes that follow the header, as many as could be read.
[[nodiscard]] DetailsSheet DescribePacket(const PacketLogHeader& header, std::span<const std::byte> captured,
                                          const LogNames& names, const Language& language);

}  // namespace brennvar
