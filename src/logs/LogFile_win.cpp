#include "base/Handles_win.h"
#include "logs/LogFile.h"

namespace brennvar {
namespace {

HANDLE HandleOf(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr): a handle is kept as its number
}

std::uint64_t Join(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

}  // namespace

static_assert(sizeof(HANDLE) == sizeof(std::intptr_t));

void LogFile::Traits::Close(Type handle) noexcept {
    ::CloseHandle(HandleOf(handle));
}

std::optional<LogFile> LogFile::Open(const std::string& path) {
    UniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    // Neither a pipe nor a device, the reading of which might wait.
    if (!file || ::GetFileType(file.Get()) != FILE_TYPE_DISK) return std::nullopt;
    return LogFile(reinterpret_cast<std::intptr_t>(file.Release()));
}

LogFileState LogFile::State() const {
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!::GetFileInformationByHandle(HandleOf(m_handle.Get()), &facts)) return {};
    return {.size = Join(facts.nFileSizeHigh, facts.nFileSizeLow),
            .written = Join(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
            .identity = Join(facts.nFileIndexHigh, facts.nFileIndexLow)};
}

std::size_t LogFile::ReadAt(std::uint64_t position, std::span<std::byte> buffer) const {
    std::size_t done = 0;
    while (done < buffer.size()) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(position + done);
        place.OffsetHigh = static_cast<DWORD>((position + done) >> 32);
        constexpr std::size_t kMost = 0x40000000;  // the call counts in 32 bits
        const std::size_t left = buffer.size() - done;
        DWORD count = 0;
        if (!::ReadFile(HandleOf(m_handle.Get()), buffer.data() + done,
                        static_cast<DWORD>(left < kMost ? left : kMost), &count, &place) ||
            count == 0) {
            break;
        }
        done += count;
    }
    return done;
}

std::vector<std::string> FileNamesIn(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry{};
    const UniqueFind search(::FindFirstFileA((folder + R"(\*)").c_str(), &entry));
    if (!search) return names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry));
    return names;
}

}  // namespace brennvar
