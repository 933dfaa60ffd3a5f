#include "base/LocalPath_win.h"

#include "base/Windows_win.h"

namespace brennvar {

bool IsOnThisMachine(const std::string& path) {
    const auto isSlash = [&](std::size_t at) { return at < path.size() && (path[at] == '\\' || path[at] == '/'); };
    if (isSlash(0) && isSlash(1)) return false;
    if (path.size() < 2 || path[1] != ':') return true;
    const char root[] = {path[0], ':', '\\', '\0'};
    return ::GetDriveTypeA(root) != DRIVE_REMOTE;
}

}  // namespace brennvar
