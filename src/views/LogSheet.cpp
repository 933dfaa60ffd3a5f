#include "views/LogSheet.h"

#include "logs/LogDetails.h"

namespace brennvar {
namespace {

// What the logs of the day know of both ends; records of both kinds name these alike.
template <RecordType Record>
LogNames NamesOf(const Record& record, LocalDate day, LogLookups& lookups) {
    return {.localName = lookups.HostName(day, record.localAddress),
            .remoteName = lookups.HostName(day, record.remoteAddress),
            .localHardware = lookups.HardwareAddress(day, record.localAddress),
            .remoteHardware = lookups.HardwareAddress(day, record.remoteAddress)};
}

}  // namespace

std::optional<DetailsSheet> ReadLogSheet(const LogPlace& place, const std::optional<LogExtent>& extent,
                                         std::uint32_t number, LocalDate day, LogLookups& lookups,
                                         const Language& language) {
    const auto reader = LogReader::Open(place);
    if (!reader || (extent && !IsSameLog(reader->File(), place, *extent))) return std::nullopt;
    if (place.kind == LogKind::Packet) {
        const auto packet = reader->ReadPacket(number);
        if (!packet) return std::nullopt;
        return DescribePacket(packet->header, packet->captured, NamesOf(packet->header, day, lookups), language);
    }
    const auto event = reader->ReadEvent(number);
    if (!event) return std::nullopt;
    return DescribeLogRecord(*event, NamesOf(*event, day, lookups), language);
}

}  // namespace brennvar
