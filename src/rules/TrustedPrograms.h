// The programs whose activities are allowed without a question. The list belongs to the service.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "ipc/CommandRecord.h"

namespace brennvar {

// Whether the list holds the whole path, whatever the case of its letters. The file is only read: one that is
// missing or held by the service at this moment trusts nobody. Blocks for the disk.
[[nodiscard]] bool IsTrustedProgram(const std::string& trustedFile, std::string_view path);

// Of a path that the service can be told to add, in bytes: its command has no more room. The file may hold longer
// ones.
inline constexpr std::size_t kLongestTrustedPath = sizeof(CommandRecord::optionText) - 1;

// The whole list in the order of the file. Records without a path are left out. Nothing when the file cannot be
// read; none where there is no file. Blocks for the disk, and for half a second at most while the service holds the
// file.
[[nodiscard]] std::optional<std::vector<std::string>> LoadTrustedPrograms(const std::string& trustedFile,
                                                                          Clock& clock);

}  // namespace brennvar
