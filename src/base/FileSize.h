// How large a file is, by a path in the code page of the system, as all paths of this program are: std::filesystem
// would take it for text of another encoding.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace brennvar {

// In bytes. Nothing when there is no such file, or a folder stands there. Looks at the disk.
[[nodiscard]] std::optional<std::uint64_t> SizeOfFile(const std::string& path);

}  // namespace brennvar
