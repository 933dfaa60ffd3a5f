// The lists of the Options page as files of the service, in the data folder of this machine.
#pragma once

#include <memory>
#include <string>

#include "base/Clock.h"
#include "views/ServiceList.h"

namespace brennvar {

// The clock is borrowed: reading waits with it for a service that holds the file.
[[nodiscard]] std::shared_ptr<const ListSource> TrustedFile(const std::string& dataFolder, Clock& clock);
[[nodiscard]] std::shared_ptr<const ListSource> SitesFile(const std::string& dataFolder, Clock& clock);

}  // namespace brennvar
