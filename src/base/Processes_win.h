// Processes of this machine.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar {

// For each image name ("brennvar.exe") the id of the first process, in the order of one process snapshot, that has
// it without regard to case; 0 when there is none.
[[nodiscard]] std::vector<std::uint32_t> FindProcessIds(std::initializer_list<std::string_view> imageNames);

// All that have it.
[[nodiscard]] std::vector<std::uint32_t> FindAllProcessIds(std::string_view imageName);
// The file that a process runs, as the system names it; empty when it cannot be told. The handle needs
// PROCESS_QUERY_LIMITED_INFORMATION.
[[nodiscard]] std::string ImagePathOf(HANDLE process);

// Enables SeDebugPrivilege in our own token, so that the paths of other users' processes can be read. False when
// the user may not have it; the program works without.
bool EnableDebugPrivilege();

}  // namespace brennvar
