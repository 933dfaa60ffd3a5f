#include "rules/RuleFiles.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include "ipc/RecordFile.h"

#ifndef _WIN32
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace brennvar {

HeldFile ReadWhenFree(RuleFiles& files, Clock& clock, const std::string& path) {
    const auto limit = clock.Elapsed() + kRecordFilePolicy.retries * kRecordFilePolicy.pause;
    while (true) {
        if (auto content = files.Read(path, kWholeFileLimit)) return {.content = std::move(content)};
        if (files.IsMissing(path)) return {.content = std::nullopt, .isMissing = true};
        if (clock.Elapsed() >= limit || !clock.Sleep(kRecordFilePolicy.pause)) return {};
    }
}

std::optional<std::string> DiskRuleFiles::Read(const std::string& path, std::uint64_t limit) {
    auto file = RecordFile::OpenReadOnly(path);
    if (!file) return std::nullopt;
    const std::uint64_t length = file->Rewind();
    if (length > limit) return std::nullopt;
    std::string content(static_cast<std::size_t>(length), '\0');
    if (file->Read(std::as_writable_bytes(std::span(content))) != content.size()) return std::nullopt;
    return content;
}

bool DiskRuleFiles::IsMissing(const std::string& path) {
    return RecordFile::IsMissing(path);
}

WriteResult DiskRuleFiles::Write(const std::string& path, std::string_view content) {
    NewFile file(path);
    file.Write(content);
    return file.PutInPlace();
}

WriteResult DiskRuleFiles::Replace(const std::string& from, const std::string& to) {
    errno = 0;
    return ReplaceByRename(from, to) ? WriteResult::Written : WriteResultOf(errno);
}

bool DiskRuleFiles::Remove(const std::string& path) {
    return std::remove(path.c_str()) == 0 || IsMissing(path);
}

#ifndef _WIN32  // RuleFiles_win.cpp has these for Windows
namespace {

class FileLock final : public FolderLock {
public:
    explicit FileLock(int file) : m_file(file) {}
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock() override { (void)close(m_file); }

private:
    const int m_file;
};

}  // namespace

std::vector<std::string> DiskRuleFiles::List(const std::string& folder) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    if (!entries) return names;
    while (const dirent* const entry = readdir(entries.get())) {
        if (entry->d_type == DT_REG) names.emplace_back(entry->d_name);
    }
    return names;
}

WriteResult DiskRuleFiles::Keep(const std::string& path, const std::string& as) {
    if (link(path.c_str(), as.c_str()) == 0) return WriteResult::Written;
    // A disk without second names.
    const auto content = Read(path, kWholeFileLimit);
    return content ? Write(as, *content) : WriteResult::Denied;
}

bool DiskRuleFiles::MakeFolder(const std::string& path) {
    return mkdir(path.c_str(), 0777) == 0 || errno == EEXIST;
}

void DiskRuleFiles::RemoveFolder(const std::string& path) {
    (void)rmdir(path.c_str());
}

std::unique_ptr<FolderLock> DiskRuleFiles::Lock(const std::string& path) {
    const int file = open(path.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    if (file < 0) return nullptr;
    auto lock = std::make_unique<FileLock>(file);
    if (flock(file, LOCK_EX | LOCK_NB) != 0) return nullptr;
    return lock;
}
#endif

}  // namespace brennvar
