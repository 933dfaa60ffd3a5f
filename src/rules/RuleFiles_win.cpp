#include "base/Handles_win.h"
#include "ipc/RecordFile.h"
#include "rules/RuleFiles.h"

namespace brennvar {
namespace {

class FileLock final : public FolderLock {
public:
    explicit FileLock(UniqueFile file) : m_file(std::move(file)) {}

private:
    const UniqueFile m_file;
};

}  // namespace

std::vector<std::string> DiskRuleFiles::List(const std::string& folder) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA entry{};
    const UniqueFind search(::FindFirstFileA((folder + "/*").c_str(), &entry));
    if (!search) return names;
    do {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(entry.cFileName);
    } while (::FindNextFileA(search.Get(), &entry));
    return names;
}

WriteResult DiskRuleFiles::Keep(const std::string& path, const std::string& as) {
    if (::CreateHardLinkA(as.c_str(), path.c_str(), nullptr)) return WriteResult::Written;
    // A disk without second names, as FAT is.
    const auto content = Read(path, kWholeFileLimit);
    return content ? Write(as, *content) : WriteResult::Denied;
}

bool DiskRuleFiles::MakeFolder(const std::string& path) {
    return ::CreateDirectoryA(path.c_str(), nullptr) || ::GetLastError() == ERROR_ALREADY_EXISTS;
}

void DiskRuleFiles::RemoveFolder(const std::string& path) {
    (void)::RemoveDirectoryA(path.c_str());
}

std::unique_ptr<FolderLock> DiskRuleFiles::Lock(const std::string& path) {
    UniqueFile file(
        ::CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    if (!file) return nullptr;
    return std::make_unique<FileLock>(std::move(file));
}

}  // namespace brennvar
