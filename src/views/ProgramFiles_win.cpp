#include "views/ProgramFiles_win.h"

#include "base/LocalPath_win.h"
#include "base/VersionInfo_win.h"
#include "base/Windows_win.h"

namespace brennvar {
namespace {

// No system dialog about a drive without a disk.
class NoDriveDialogs {
public:
    NoDriveDialogs() { ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_before); }
    NoDriveDialogs(const NoDriveDialogs&) = delete;
    NoDriveDialogs& operator=(const NoDriveDialogs&) = delete;
    ~NoDriveDialogs() { ::SetThreadErrorMode(m_before, nullptr); }

private:
    DWORD m_before = 0;
};

}  // namespace

FileStamp DiskProgramFiles::Stamp(const std::string& path) const {
    if (!IsOnThisMachine(path)) return {};
    const NoDriveDialogs none;
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &facts)) return {};
    const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    return {.written = join(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
            .size = join(facts.nFileSizeHigh, facts.nFileSizeLow)};
}

std::string DiskProgramFiles::Description(const std::string& path) const {
    const NoDriveDialogs none;
    return ReadFileDescription(path);
}

}  // namespace brennvar
