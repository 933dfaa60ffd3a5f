#include "base/FileSize.h"

#include <sys/stat.h>
#include <sys/types.h>

namespace brennvar {

std::optional<std::uint64_t> SizeOfFile(const std::string& path) {
#ifdef _WIN32
    struct _stat64 facts {};
    if (_stat64(path.c_str(), &facts) != 0 || (facts.st_mode & _S_IFMT) != _S_IFREG) return std::nullopt;
#else
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
#endif
    return static_cast<std::uint64_t>(facts.st_size);
}

}  // namespace brennvar
