#include <cerrno>

#include "base/NewFile.h"
#include "base/Windows_win.h"

namespace brennvar {

bool ReplaceByRename(const std::string& from, const std::string& to) {
    if (::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return true;
    const DWORD error = ::GetLastError();
    // A file that another program holds gives a sharing violation; to the user it may not be written either.
    errno = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ? EACCES
            : error == ERROR_DISK_FULL                                       ? ENOSPC
                                                                             : EIO;
    return false;
}

}  // namespace brennvar
