// The programs whose activities are allowed without a question. The list belongs to the service.
#pragma once

#include <string>
#include <string_view>

namespace brennvar {

// Whether the list holds the whole path, whatever the case of its letters. The file is only read: one that is
// missing or held by the service at this moment trusts nobody. Blocks for the disk.
[[nodiscard]] bool IsTrustedProgram(const std::string& trustedFile, std::string_view path);

}  // namespace brennvar
