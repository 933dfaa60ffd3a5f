#include "views/LogSheet.h"

#include "logs/LogDetails.h"

namespace brennvar {

std::optional<DetailsSheet> ReadLogSheet(const LogPlace& place, const std::optional<LogExtent>& extent,
                                         std::uint32_t number, LocalDate day, LogLookups& lookups,
                                         const Language& language) {
    const auto reader = LogReader::Open(place);
    if (!reader || (extent && !IsSameLog(reader->File(), place, *extent))) return std::nullopt;
    if (place.kind == LogKind::Packet) {
        const auto packet = reader->ReadPacket(number);
        if (!packet) return std::nullopt;
        const PacketLogHeader& header = packet->header;
        return DescribePacket(header, packet->captured,
                              LookUpNames(lookups, day, header.localAddress, header.remoteAddress), language);
    }
    const auto event = reader->ReadEvent(number);
    if (!event) return std::nullopt;
    return DescribeLogRecord(*event, LookUpNames(lookups, day, event->localAddress, event->remoteAddress),
                             language);
}

}  // namespace brennvar
