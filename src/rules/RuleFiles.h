// What is done to the files of the folder "Rules" and of the folders beside it, as a seam: a test lets any call
// fail, or the program end there. Paths have '/' before the last name, which Windows understands as well; none of
// these calls waits for anything but the disk.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "base/NewFile.h"

namespace brennvar {

// Held by this process as long as it lives.
class FolderLock {
public:
    virtual ~FolderLock() = default;
};

class RuleFiles {
public:
    virtual ~RuleFiles() = default;
    // The whole file; nothing when it cannot be read or is longer than the limit, in bytes.
    [[nodiscard]] virtual std::optional<std::string> Read(const std::string& path, std::uint64_t limit) = 0;
    // True when there certainly is nothing at this path.
    [[nodiscard]] virtual bool IsMissing(const std::string& path) = 0;
    // The names, without folder, of all files in a folder.
    [[nodiscard]] virtual std::vector<std::string> List(const std::string& folder) = 0;
    // A new file with this content, on the disk and whole, or none; one that was there is replaced.
    [[nodiscard]] virtual WriteResult Write(const std::string& path, std::string_view content) = 0;
    // The file becomes another one, or takes its place, in one step. Denied also when somebody holds one of them.
    [[nodiscard]] virtual WriteResult Replace(const std::string& from, const std::string& to) = 0;
    // The file's content under a second name, which was free: it outlives the first one. Denied as above.
    [[nodiscard]] virtual WriteResult Keep(const std::string& path, const std::string& as) = 0;
    // True when the file is not there any more.
    [[nodiscard]] virtual bool Remove(const std::string& path) = 0;
    // True when the folder is there.
    [[nodiscard]] virtual bool MakeFolder(const std::string& path) = 0;
    // Only when it is empty.
    virtual void RemoveFolder(const std::string& path) = 0;
    // Null while another process has it, or when there is no place for it. It ends with the process, however that
    // does.
    [[nodiscard]] virtual std::unique_ptr<FolderLock> Lock(const std::string& path) = 0;
};

// A file of the service, which may hold it for a moment.
struct HeldFile {
    std::optional<std::string> content;
    bool isMissing = false;  // certainly; with neither it is there, or may be, and cannot be read
};
// Waits with the clock, for as long as kRecordFilePolicy says. A file above kWholeFileLimit cannot be read.
[[nodiscard]] HeldFile ReadWhenFree(RuleFiles& files, Clock& clock, const std::string& path);

class DiskRuleFiles final : public RuleFiles {
public:
    [[nodiscard]] std::optional<std::string> Read(const std::string& path, std::uint64_t limit) override;
    [[nodiscard]] bool IsMissing(const std::string& path) override;
    [[nodiscard]] std::vector<std::string> List(const std::string& folder) override;
    [[nodiscard]] WriteResult Write(const std::string& path, std::string_view content) override;
    [[nodiscard]] WriteResult Replace(const std::string& from, const std::string& to) override;
    [[nodiscard]] WriteResult Keep(const std::string& path, const std::string& as) override;
    [[nodiscard]] bool Remove(const std::string& path) override;
    [[nodiscard]] bool MakeFolder(const std::string& path) override;
    void RemoveFolder(const std::string& path) override;
    [[nodiscard]] std::unique_ptr<FolderLock> Lock(const std::string& path) override;
};

}  // namespace brennvar
