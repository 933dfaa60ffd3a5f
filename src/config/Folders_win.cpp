#include "config/Folders_win.h"

#include "base/Windows_win.h"
// Needs windows.h before it.
#include <shlobj.h>

namespace brennvar {

std::string GetInstallationFolder() {
    std::string path(MAX_PATH, '\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);  // cut: a length that fills the buffer
    }
    // Without a backslash (no path was found) the result is empty.
    const std::size_t backslash = path.rfind('\\');
    return path.substr(0, backslash == std::string::npos ? 0 : backslash);
}

std::string GetDataFolder() {
    // Every window asks for it; the system looks it up in the registry each time.
    static const std::string kFolder = [] {
        char common[MAX_PATH] = {};
        if (!::SHGetSpecialFolderPathA(nullptr, common, CSIDL_COMMON_APPDATA, FALSE)) common[0] = '\0';
        return std::string(common) + R"(\Quorlan\Brennvar Firewall)";
    }();
    return kFolder;
}

}  // namespace brennvar
