#include "views/LogSheet.h"

#include "logs/LogListing.h"

namespace brennvar {

std::optional<DetailsSheet> ReadLogSheet(const LogPlace& place, std::uint32_t number, LocalDate day,
                                         LogLookups& lookups, const Language& language) {
    const auto reader = LogReader::Open(place);
    const LogEntry* const entry = reader ? reader->Read(number) : nullptr;
    if (entry == nullptr) return std::nullopt;
    const LogTexts texts(language);
    const LogRow row = RowOf(*entry, texts);
    DetailsGroup group;
    for (std::size_t i = 0; i < kLogColumnCount; ++i) {
        group.lines.push_back({.label = texts.columns[i] + ':', .value = row.cells[i], .tone = Tone::Plain});
    }
    group.lines.push_back({.label = texts.path + ':', .value = row.path, .tone = Tone::Plain});
    if (entry->hasAddresses) {
        group.lines.push_back({.label = language.GetText(1466, "Remote name:"),
                               .value = lookups.HostName(day, entry->remoteAddress),
                               .tone = Tone::Plain});
        group.lines.push_back({.label = language.GetText(1467, "Remote hardware address:"),
                               .value = lookups.HardwareAddress(day, entry->remoteAddress),
                               .tone = Tone::Plain});
    }
    std::erase_if(group.lines, [](const DetailsLine& line) { return line.value.empty(); });
    DetailsSheet sheet;
    sheet.title = language.GetText(1468, "Log details");
    sheet.groups.push_back(std::move(group));
    return sheet;
}

}  // namespace brennvar
