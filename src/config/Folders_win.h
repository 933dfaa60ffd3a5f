// The two folders that everything else lies below. They do not change while the program runs; no trailing
// backslash.
#pragma once

#include <string>

namespace brennvar {

// The folder of the running program's file.
[[nodiscard]] std::string GetInstallationFolder();
// Our folder among the application data of all users; the service makes it.
[[nodiscard]] std::string GetDataFolder();

}  // namespace brennvar
