// The two folders that everything else lies below. Computed afresh on each call; no trailing backslash.
#pragma once

#include <string>

namespace brennvar {

// The folder of the running program's file.
[[nodiscard]] std::string GetInstallationFolder();
// Our folder among the application data of all users; the service makes it.
[[nodiscard]] std::string GetDataFolder();

}  // namespace brennvar
