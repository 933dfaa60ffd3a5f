#include "base/ShellOpen_win.h"

#include "base/ComOfThread_win.h"
#include "base/Detached.h"
#include "base/LocalPath_win.h"
// windows.h must stand before this.
#include <shellapi.h>

namespace brennvar {

void OpenInBrowser(const std::string& address) {
    (void)RunDetached([address] {
        const ComOfThread com;
        ::ShellExecuteA(nullptr, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    });
}

void OpenFolderOf(const std::string& file) {
    (void)RunDetached([folder = file.substr(0, file.find_last_of("\\/") + 1)] {
        const ComOfThread com;
        // Paths come from other programs. What is opened is a folder, and nothing that could be started.
        if (!IsOnThisMachine(folder)) return;
        const DWORD attributes = ::GetFileAttributesA(folder.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return;
        ::ShellExecuteA(nullptr, "explore", folder.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    });
}

}  // namespace brennvar
