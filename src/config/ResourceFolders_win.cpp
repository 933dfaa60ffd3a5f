#include "config/ResourceFolders_win.h"

#include "base/Handles_win.h"

namespace brennvar {

std::vector<std::string> ListResourceFolders(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry{};
    const UniqueFind find(::FindFirstFileA((folder + R"(\*.*)").c_str(), &entry));
    if (!find) return names;
    do {
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder && entry.cFileName[0] != '.') names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(find.Get(), &entry));
    return names;
}

}  // namespace brennvar
