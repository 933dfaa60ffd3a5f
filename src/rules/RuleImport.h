// Puts planned files into the folder "Rules", all of them or none. Everything is written into a folder beside it
// first, then a journal says what is about to happen, and each file is moved in by one rename. Until the journal is
// deleted the import has not happened: what fails, and what finds a journal at the next start, puts back what was.
//
//     Rules.import/lock      held while anybody works here
//     Rules.import/new.0     the file that is to come, whole and on the disk
//     Rules.import/old.0     what it replaces, a second name of the very file
//     Rules.import/journal   which files, under which numbers
//
// A file that the service has written since is not put back over: that is newer than both. The folder itself stays
// until whoever imports has told the service (ServiceKnows): one that is found at a start says that the service may
// go by rules that are there no more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "base/StopSignal.h"
#include "rules/ImportPlan.h"
#include "rules/RuleFiles.h"
#include "rules/RuleFolders.h"

namespace brennvar {

enum class ImportResult : std::uint8_t {
    Done,
    Stopped,  // by the user, or the program ends
    Held,     // the service holds a file, or may not be told from one that nobody may write
    Busy,     // another process imports
    DiskFull,
    TooLarge,  // what is there now could not be kept in a restore point that can be read again
    Failed,
};

// What an import makes of one file; one line of the journal.
struct JournalEntry {
    std::string path;        // below "Rules"
    std::uint64_t size = 0;  // of the new content
    std::uint32_t crc = 0;
    bool wasThere = false;   // there is an old one
    bool isRemoved = false;  // there is no new one
    friend bool operator==(const JournalEntry&, const JournalEntry&) = default;
};

struct ImportOutcome {
    ImportResult result = ImportResult::Done;
    // Something went wrong and could not be put back either; the next import or start tries again.
    bool isHalfway = false;
    // Of an import that is done: the name of its restore point, and what it made of each file.
    std::string restorePoint{};
    std::vector<JournalEntry> files{};
};

struct ImportJournal {
    std::string restorePoint;
    std::vector<JournalEntry> entries;
    friend bool operator==(const ImportJournal&, const ImportJournal&) = default;
};
[[nodiscard]] std::string FormatJournal(const ImportJournal& journal);
// Nothing when it is no whole journal.
[[nodiscard]] std::optional<ImportJournal> ParseJournal(std::string_view text);

// On one thread, but for the packing of the restore point; waits for files that the service holds, with the clock,
// for as long as whoever reads one of its files waits (kRecordFilePolicy).
class RuleImport {
public:
    // All are borrowed.
    RuleImport(RuleFiles& files, Clock& clock, RuleFolders folders)
        : m_files(files), m_clock(clock), m_folders(std::move(folders)) {}

    enum class Kind : std::uint8_t { Import, Undo };
    [[nodiscard]] ImportOutcome Apply(const ImportPlan& plan, Kind kind, const StopSignal& stop);
    // Takes back what an import left that ended in the middle. True: there has been an import that the service may
    // not have been told of; false also while another process imports.
    [[nodiscard]] bool Recover();
    // The service has been told of what Apply or Recover has done.
    void ServiceKnows() { m_files.RemoveFolder(m_folders.import); }
    // Whether the file is what the import made of it; nothing when it cannot be read.
    [[nodiscard]] std::optional<bool> IsInPlace(const JournalEntry& entry);

    // What a restore point is made of.
    struct OldFiles {
        std::vector<std::pair<std::string, std::string>> files;  // path and content
        std::vector<std::string> added;                          // paths where there was none
    };

private:
    [[nodiscard]] ImportOutcome ApplyLocked(const ImportPlan& plan, Kind kind, const StopSignal& stop);
    [[nodiscard]] ImportResult Stage(const ImportPlan& plan, const ImportJournal& journal, const StopSignal& stop);
    [[nodiscard]] ImportResult ReadOldFiles(const ImportJournal& journal, OldFiles& old);
    [[nodiscard]] ImportResult MoveIn(const ImportJournal& journal, std::size_t& moved, const StopSignal& stop);
    // The first ones of the journal, as far as they have been moved in and nobody has written over them since;
    // false when one cannot be put back, or nobody can say.
    [[nodiscard]] bool PutBack(const ImportJournal& journal, std::size_t count);
    // False: there is a journal that could not be followed.
    [[nodiscard]] bool RecoverLocked();
    // An import that has not happened: nothing of it stays.
    [[nodiscard]] bool Forget(const ImportJournal& journal);
    void CleanUp();
    [[nodiscard]] bool MakeParents(const std::string& path);

    // Again and again while the file is held and there is time left.
    template <class Step>
    [[nodiscard]] WriteResult Retry(Step step);

    [[nodiscard]] std::string Target(const JournalEntry& entry) const { return m_folders.rules + '/' + entry.path; }
    [[nodiscard]] std::string Staged(std::string_view kind, std::size_t number) const;
    [[nodiscard]] std::string JournalPath() const { return m_folders.import + "/journal"; }

    RuleFiles& m_files;
    Clock& m_clock;
    const RuleFolders m_folders;
};

}  // namespace brennvar
