#include "rules/SiteList.h"

#include <utility>

#include "rules/ListFile.h"

namespace brennvar {

std::optional<std::vector<Site>> LoadSites(const std::string& sitesFile, Clock& clock) {
    std::vector<Site> sites;
    const bool isWhole = ReadListRecords<SiteRecord>(sitesFile, clock, sites, [&sites](const SiteRecord& record) {
        std::string name(TextOf(record.name));
        if (!name.empty()) sites.push_back({.id = record.id, .name = std::move(name)});
    });
    if (!isWhole) return std::nullopt;
    return sites;
}

}  // namespace brennvar
