#include "ipc/RecordFile.h"

#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstdlib>

namespace brennvar {
namespace {

// What a look at the path says, without opening anything.
enum class PathState { MissingOrEmpty, File, SomethingElse };

// stat and not std::filesystem: on Windows the path is text of the code page, which stat takes as it is.
PathState StateOf(const std::string& path) {
#ifdef _WIN32
    struct _stat64 facts {};
    if (_stat64(path.c_str(), &facts) != 0) return PathState::MissingOrEmpty;
    if ((facts.st_mode & _S_IFMT) != _S_IFREG) return PathState::SomethingElse;
#else
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0) return PathState::MissingOrEmpty;
    if (!S_ISREG(facts.st_mode)) return PathState::SomethingElse;
#endif
    return facts.st_size < 1 ? PathState::MissingOrEmpty : PathState::File;
}

// Both with 64-bit positions, which fseek and ftell do not have on Windows.
bool SeekTo(std::FILE* file, int origin) {
#ifdef _WIN32
    return _fseeki64(file, 0, origin) == 0;
#else
    return fseeko(file, 0, origin) == 0;
#endif
}
std::int64_t PositionIn(std::FILE* file) {
#ifdef _WIN32
    return _ftelli64(file);
#else
    return ftello(file);
#endif
}

// True when the waits together took as long as they should have, whatever their count. A clock that is set back
// meanwhile leaves it to the count.
bool TookTooLong(const Clock& clock, FileTime start) {
    constexpr auto kLimit = static_cast<FileTime>((kRecordFilePolicy.retries * kRecordFilePolicy.pause).count()) *
                            kFileTimePerSecond / 1000;
    const FileTime now = clock.UtcNow();
    return now > start && now - start >= kLimit;
}

// After a failed open: this user may not write the file at all, so that waiting for it is of no use.
bool WasDenied() {
#ifdef _WIN32
    constexpr unsigned long kErrorAccessDenied = 5;  // of Windows; a file that is held gives a sharing violation
    return _doserrno == kErrorAccessDenied;
#else
    return errno == EACCES;
#endif
}

}  // namespace

RecordFile::RecordFile(std::FILE* file) : m_file(file) {
    // Reads are large already; a buffer of the library would only copy them once more.
    (void)std::setvbuf(file, nullptr, _IONBF, 0);
}

std::optional<RecordFile> RecordFile::Open(const std::string& path, const char* mode) {
    std::FILE* const file = std::fopen(path.c_str(), mode);
    if (file == nullptr) return std::nullopt;
    return RecordFile(file);
}

std::optional<RecordFile> RecordFile::OpenReadOnly(const std::string& path) {
    // Elsewhere than on Windows a folder can be opened, but not read.
    if (StateOf(path) == PathState::SomethingElse) return std::nullopt;
    return Open(path, "rb");
}

bool RecordFile::IsMissing(const std::string& path) {
#ifdef _WIN32
    struct _stat64 facts {};
    const bool isThere = _stat64(path.c_str(), &facts) == 0;
#else
    struct stat facts {};
    const bool isThere = stat(path.c_str(), &facts) == 0;
#endif
    return !isThere && (errno == ENOENT || errno == ENOTDIR);
}

std::optional<RecordFile> RecordFile::OpenNow(const std::string& path) {
    if (auto file = Open(path, "rb+")) return file;
    return WasDenied() ? OpenReadOnly(path) : std::nullopt;
}

std::optional<RecordFile> RecordFile::OpenShared(const std::string& path, Clock& clock) {
    if (StateOf(path) == PathState::SomethingElse) return std::nullopt;
    if (auto file = OpenNow(path)) return file;
    const FileTime start = clock.UtcNow();
    for (int retry = 0; retry < kRecordFilePolicy.retries; ++retry) {
        if (StateOf(path) == PathState::MissingOrEmpty) {
            // Creates as "wb+" would, but never empties: the service may have written the file since the look.
            if (auto file = Open(path, "ab+")) return file;
            break;
        }
        if (!clock.Sleep(kRecordFilePolicy.pause)) break;
        if (auto file = OpenNow(path)) return file;
        if (TookTooLong(clock, start)) break;
    }
    return OpenReadOnly(path);
}

std::uint64_t RecordFile::Rewind() {
    const std::int64_t length = SeekTo(m_file.get(), SEEK_END) ? PositionIn(m_file.get()) : 0;
    if (!SeekTo(m_file.get(), SEEK_SET) || length < 0) return 0;
    return static_cast<std::uint64_t>(length);
}

std::size_t RecordFile::Read(std::span<std::byte> buffer) {
    return std::fread(buffer.data(), 1, buffer.size(), m_file.get());
}

}  // namespace brennvar
