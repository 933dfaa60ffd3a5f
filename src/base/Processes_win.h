// Processes of this machine.
#pragma once

#include <cstdint>
#include <string_view>

namespace brennvar {

// The id of the first process, in the order of a process snapshot, whose image name ("brennvar.exe") is the given
// one without regard to case; 0 when there is none.
[[nodiscard]] std::uint32_t FindProcessId(std::string_view imageName);

// Enables SeDebugPrivilege in our own token, so that the paths of other users' processes can be read. False when
// the user may not have it; the program works without.
bool EnableDebugPrivilege();

}  // namespace brennvar
