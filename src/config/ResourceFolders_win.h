// The folders that the user may choose a skin or a language from.
#pragma once

#include <string>
#include <vector>

namespace brennvar {

// The names of the folders in this one, in the order in which the system lists them; names that begin with a dot
// are not for users. Empty when there is no such folder.
[[nodiscard]] std::vector<std::string> ListResourceFolders(const std::string& folder);

}  // namespace brennvar
