// The sites that browsers are kept from: "domain.conf" in the data folder. The list belongs to the service, which
// adds and removes by the web-filter queue (ipc/FilterQueue.h); records: rules/ListRecords.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "rules/ListRecords.h"

namespace brennvar {

// Of a name, in bytes without the zero.
inline constexpr std::size_t kLongestSite = sizeof(SiteRecord::name) - 1;

struct Site {
    std::uint32_t id = 0;  // 0: the service cannot be told to remove it
    std::string name{};
    friend bool operator==(const Site&, const Site&) = default;
};

// In the order of the file, as it stands: an identifier may come twice. Records without a name are left out.
// Nothing when the file cannot be read; none where there is no file. Blocks for the disk, and for half a second at
// most while the service holds the file.
[[nodiscard]] std::optional<std::vector<Site>> LoadSites(const std::string& sitesFile, Clock& clock);

}  // namespace brennvar
