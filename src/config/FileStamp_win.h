// Looks at a file of this machine.
#pragma once

#include <string>

#include "config/FileStamp.h"

namespace brennvar {

// Without opening the file; for a disk of this machine no wait.
[[nodiscard]] FileStamp StampOf(const std::string& path);

}  // namespace brennvar
