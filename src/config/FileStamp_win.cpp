#include "config/FileStamp_win.h"

#include "base/Windows_win.h"

namespace brennvar {

FileStamp StampOf(const std::string& path) {
    const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &facts)) return {};
    return {.written = join(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
            .size = join(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

}  // namespace brennvar
