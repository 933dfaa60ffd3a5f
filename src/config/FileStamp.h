// Tells whether a file has been written since the last look, without opening it.
#pragma once

#include <cstdint>

#include "base/Clock.h"

namespace brennvar {

struct FileStamp {
    FileTime written = 0;  // 0: there is no such file
    std::uint64_t size = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;

    // Two changes within the precision of a file's time can leave the same stamp: a file that has just been written
    // is better looked into again. A time to come, as after the clock was set back, is not fresh.
    [[nodiscard]] bool IsFresh(FileTime now) const { return now - written < 2 * kFileTimePerSecond; }
};

}  // namespace brennvar
