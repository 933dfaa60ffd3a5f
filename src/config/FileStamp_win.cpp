#include "config/FileStamp_win.h"

#include "base/Windows_win.h"

namespace brennvar {
namespace {

constexpr FileTime kFreshFor = 2 * kFileTimePerSecond;

std::uint64_t Join(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

FileTime TimeOf(const FILETIME& time) {
    return static_cast<FileTime>(Join(time.dwHighDateTime, time.dwLowDateTime));
}

}  // namespace

FileStamp StampOfFile(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &facts)) return {};
    return {.written = TimeOf(facts.ftLastWriteTime), .size = Join(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

bool IsFresh(const FileStamp& stamp) {
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return TimeOf(now) - stamp.written < kFreshFor;
}

}  // namespace brennvar
