#include "views/LogSheet.h"

#include "logs/LogDetails.h"

namespace brennvar {
namespace {

LogNames NamesOf(Ipv4 local, Ipv4 remote, LocalDate day, LogLookups& lookups) {
    return {.localName = lookups.HostName(day, local),
            .remoteName = lookups.HostName(day, remote),
            .localHardware = lookups.HardwareAddress(day, local),
            .remoteHardware = lookups.HardwareAddress(day, remote)};
}

}  // namespace

std::optional<DetailsSheet> ReadLogSheet(const LogPlace& place, std::uint32_t number, LocalDate day,
                                         LogLookups& lookups, const Language& language) {
    const auto reader = LogReader::Open(place);
    if (!reader) return std::nullopt;
    if (place.kind == LogKind::Packet) {
        const std::optional<LoggedPacket> packet = reader->ReadPacket(number);
        if (!packet) return std::nullopt;
        const LogNames names = NamesOf(packet->header.localAddress, packet->header.remoteAddress, day, lookups);
        return DescribePacket(packet->header, packet->captured, names, language);
    }
    const std::optional<TrafficLogRecord> record = reader->ReadEvent(number);
    if (!record) return std::nullopt;
    const LogNames names = !EntryOf(*record).hasAddresses
                               ? LogNames{}
                               : NamesOf(record->localAddress, record->remoteAddress, day, lookups);
    return DescribeLogRecord(*record, names, language);
}

}  // namespace brennvar
