// Puts planned files into the folder "Rules", all of them or none. Everything is written into a folder beside it
// first, then a journal says what is about to happen, and each file is moved in by one rename. Until the journal is
// deleted the import has not happened: what fails, and what finds a journal at the next start, puts back what was.
//
//     Rules.import/lock      held while anybody works here
//     Rules.import/new.0     the file that is to come, whole and on the disk
//     Rules.import/old.0     what it replaces, a second name of the very file
//     Rules.import/journal   which files, under which numbers
//
// A file that the service has written since is not put back over: that is newer than both.
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
    Failed,
};

struct ImportOutcome {
    ImportResult result = ImportResult::Done;
    // Something went wrong and could not be put back either; the next import or start tries again.
    bool isHalfway = false;
    std::string restorePoint{};  // name of the file, of an import that is done
};

// One line of the journal.
struct JournalEntry {
    std::string path;        // below "Rules"
    std::uint64_t size = 0;  // of the new content
    std::uint32_t crc = 0;
    bool wasThere = false;   // there is an old one
    bool isRemoved = false;  // there is no new one
    friend bool operator==(const JournalEntry&, const JournalEntry&) = default;
};
struct ImportJournal {
    std::string restorePoint;
    std::vector<JournalEntry> entries;
    friend bool operator==(const ImportJournal&, const ImportJournal&) = default;
};
[[nodiscard]] std::string FormatJournal(const ImportJournal& journal);
// Nothing when it is no whole journal.
[[nodiscard]] std::optional<ImportJournal> ParseJournal(std::string_view text);

// On one thread; waits for files that the service holds, with the clock, for as long as whoever reads one of its
// files waits (kRecordFilePolicy).
class RuleImport {
public:
    // All are borrowed.
    RuleImport(RuleFiles& files, Clock& clock, RuleFolders folders)
        : m_files(files), m_clock(clock), m_folders(std::move(folders)) {}

    enum class Kind : std::uint8_t { Import, Undo };
    [[nodiscard]] ImportOutcome Apply(const ImportPlan& plan, Kind kind, const StopSignal& stop);
    // Takes back what an import left that ended in the middle. Nothing to do in all other cases.
    void Recover();

private:
    [[nodiscard]] ImportOutcome ApplyLocked(const ImportPlan& plan, Kind kind, const StopSignal& stop);
    [[nodiscard]] ImportResult Stage(const ImportPlan& plan, ImportJournal& journal, const StopSignal& stop);
    [[nodiscard]] WriteResult WriteRestorePoint(const ImportJournal& journal);
    [[nodiscard]] ImportResult MoveIn(const ImportJournal& journal, std::size_t& moved, const StopSignal& stop);
    // The first ones of the journal, whose moves have been done; false when one cannot be put back.
    [[nodiscard]] bool PutBack(const ImportJournal& journal, std::size_t count);
    [[nodiscard]] bool IsInPlace(const JournalEntry& entry);
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
