// What programs call themselves, for lists of many programs: the file descriptions of their version resources, read
// on a queue of its own, because a disk may not answer for minutes, and kept until a file is another one. Who shows
// them gets what is known now, and is told when there is more. User-interface thread only.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "config/FileStamp.h"

namespace brennvar {

// Program files, as a seam. Called on the queue; may take as long as a disk does.
class ProgramFiles {
public:
    virtual ~ProgramFiles() = default;
    // Without looking into it; the same stamp means the same file. Of a file that is not there, or is not looked at
    // because it is on another machine: the stamp of none.
    [[nodiscard]] virtual FileStamp Stamp(const std::string& path) const = 0;
    // Empty: it says nothing of itself.
    [[nodiscard]] virtual std::string Description(const std::string& path) const = 0;
};

class ProgramNames {
public:
    using Descriptions = std::unordered_map<std::string, std::string>;  // by path, only those that are not empty
    static constexpr std::size_t kMostPrograms = 2048;                  // that are remembered

    // changed: all that was wanted has been read, and some of it is new. queue and files are borrowed.
    ProgramNames(TaskQueue& queue, const ProgramFiles& files, std::function<void()> changed);

    // Reads what is not known of these programs. Paths in one spelling; an empty one is none.
    void Want(const std::vector<std::string>& paths);
    // Files may have been replaced: the next Want looks at all of its files again.
    void LookAgain();
    // The same object until something is new; never null.
    [[nodiscard]] std::shared_ptr<const Descriptions> Known();

private:
    struct Entry {
        FileStamp stamp;
        std::string description;
        bool isChecked = false;  // since LookAgain
    };
    struct Found {
        FileStamp stamp;
        std::string description;
        bool isOther = false;  // than the entry that there was
    };

    void Read(const std::string& path, std::optional<FileStamp> known);
    void OnRead(const std::string& path, std::optional<Found> found);
    void Forget(const std::vector<std::string>& wanted);

    TaskQueue& m_queue;
    const ProgramFiles& m_files;
    const std::function<void()> m_changed;
    std::unordered_map<std::string, Entry> m_entries;
    std::unordered_set<std::string> m_underWay;
    std::shared_ptr<const Descriptions> m_known = std::make_shared<const Descriptions>();
    bool m_isKnownOld = false;     // m_known lacks something of m_entries
    bool m_isAnythingNew = false;  // since m_changed was called
    const WhileAlive m_alive;
};

}  // namespace brennvar
