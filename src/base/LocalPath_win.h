// Whether a program file lies on this machine.
#pragma once

#include <string>

namespace brennvar {

// False for a path on another machine, as a share or as a drive that stands for one. Looking into such a file can
// take minutes, goes over the network, and lets whoever chose the path choose the machine that is asked.
[[nodiscard]] bool IsOnThisMachine(const std::string& path);

}  // namespace brennvar
