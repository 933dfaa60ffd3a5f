#include "logs/LogFile.h"

#ifndef _WIN32  // LogFile_win.cpp has these for Windows, whose C library cannot share a file for deletion

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>

namespace brennvar {

void LogFile::Traits::Close(Type handle) noexcept {
    (void)close(static_cast<int>(handle));  // only read from: nothing is lost
}

std::optional<LogFile> LogFile::Open(const std::string& path) {
    struct stat facts {};
    // Neither a folder nor a device, the opening of which might wait.
    if (stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return std::nullopt;
    return LogFile(file);
}

LogFileState LogFile::State() const {
    struct stat facts {};
    if (fstat(static_cast<int>(m_handle.Get()), &facts) != 0) return {};
    constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
    return {.size = static_cast<std::uint64_t>(facts.st_size),
            .written = static_cast<std::uint64_t>(facts.st_mtim.tv_sec) * kNanosecondsPerSecond +
                       static_cast<std::uint64_t>(facts.st_mtim.tv_nsec),
            .identity = static_cast<std::uint64_t>(facts.st_ino)};
}

std::size_t LogFile::ReadAt(std::uint64_t position, std::span<std::byte> buffer) const {
    std::size_t done = 0;
    while (done < buffer.size()) {
        const auto count = pread(static_cast<int>(m_handle.Get()), buffer.data() + done, buffer.size() - done,
                                 static_cast<off_t>(position + done));
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

std::vector<std::string> FileNamesIn(const std::string& folder) {
    // A backslash is an ordinary character here: "a/b\c" stands for the files of "a" whose names begin with "b\c\".
    const std::size_t slash = folder.rfind('/');
    const std::string parent = slash == std::string::npos ? "." : folder.substr(0, slash + 1);
    const std::string prefix = (slash == std::string::npos ? folder : folder.substr(slash + 1)) + '\\';
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(parent.c_str()), closedir);
    if (!entries) return names;
    while (const dirent* const entry = readdir(entries.get())) {
        const std::string name = entry->d_name;
        if (name.starts_with(prefix)) names.push_back(name.substr(prefix.size()));
    }
    return names;
}

}  // namespace brennvar

#endif
