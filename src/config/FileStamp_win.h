// Tells whether a file has been written since the last look, without opening it.
#pragma once

#include <cstdint>
#include <string>

#include "base/Clock.h"

namespace brennvar {

struct FileStamp {
    FileTime written = 0;  // 0: there is no such file
    std::uint64_t size = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

[[nodiscard]] FileStamp StampOfFile(const std::string& path);
// Two changes within the precision of a file's time can leave the same stamp: a file that has just been written is
// better looked into again.
[[nodiscard]] bool IsFresh(const FileStamp& stamp);

}  // namespace brennvar
