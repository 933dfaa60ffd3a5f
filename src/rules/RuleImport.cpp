#include "rules/RuleImport.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <future>
#include <utility>

#include "ipc/RecordFile.h"
#include "rules/RestorePoints.h"
#include "rules/SafeEntryName.h"

namespace brennvar {
namespace {

constexpr std::string_view kNew = "new";
constexpr std::string_view kOld = "old";
constexpr std::string_view kJournalHead = "Brennvar import 1";
constexpr std::string_view kJournalEnd = "end";
constexpr std::uint64_t kLongestJournal = std::uint64_t{1} << 20;  // 1,000 paths of 1,000 bytes

ImportResult ResultOf(WriteResult result) {
    switch (result) {
        case WriteResult::Written: return ImportResult::Done;
        case WriteResult::DiskFull: return ImportResult::DiskFull;
        case WriteResult::Denied: return ImportResult::Held;
        default: return ImportResult::Failed;
    }
}

// The next word of a line, up to the blank.
std::string_view TakeWord(std::string_view& line) {
    const std::size_t end = std::min(line.find(' '), line.size());
    const std::string_view word = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    return word;
}

template <class Number>
bool TakeNumber(std::string_view& line, Number& number) {
    const std::string_view word = TakeWord(line);
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size();
}

std::optional<JournalEntry> ParseEntry(std::string_view line) {
    JournalEntry entry;
    unsigned wasThere = 0;
    unsigned isRemoved = 0;
    if (!TakeNumber(line, wasThere) || !TakeNumber(line, isRemoved) || !TakeNumber(line, entry.size) ||
        !TakeNumber(line, entry.crc) || EntryPath(line) != line) {
        return std::nullopt;
    }
    entry.wasThere = wasThere != 0;
    entry.isRemoved = isRemoved != 0;
    entry.path = line;
    return entry;
}

// Nothing when memory is short.
std::optional<std::string> PackOldFiles(const RuleImport::OldFiles& old, Packing packing) {
    ArchiveWriter archive;
    for (const auto& [path, content] : old.files) {
        if (!archive.AddFile(path, content, packing)) return std::nullopt;
    }
    // An archive has to have something in it; the name of a folder is skipped when it is read.
    if (old.files.empty() && !archive.AddFile("./", {}, Packing::Stored)) return std::nullopt;
    if (!archive.SetComment(RestoreComment(old.added))) return std::nullopt;
    return archive.Close();
}

// A file that packs too well would be refused when it is read again.
std::optional<std::string> PackRestorePoint(const RuleImport::OldFiles& old) {
    auto bytes = PackOldFiles(old, Packing::Fast);
    if (!bytes) return std::nullopt;
    const ArchiveReader reader(*bytes);
    const bool isReadable = std::all_of(reader.Entries().begin(), reader.Entries().end(),
                                        [](const auto& entry) { return entry.fault == ArchiveFault::None; });
    return isReadable ? std::move(bytes) : PackOldFiles(old, Packing::Stored);
}

}  // namespace

std::string FormatJournal(const ImportJournal& journal) {
    std::string text(kJournalHead);
    text.append("\n").append(journal.restorePoint).append("\n");
    for (const JournalEntry& entry : journal.entries) {
        text.append(entry.wasThere ? "1 " : "0 ").append(entry.isRemoved ? "1 " : "0 ");
        text.append(std::to_string(entry.size)).append(" ").append(std::to_string(entry.crc)).append(" ");
        text.append(entry.path).append("\n");
    }
    return text.append(kJournalEnd).append("\n");
}

std::optional<ImportJournal> ParseJournal(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    constexpr std::size_t kFrame = 3;  // head, restore point, end
    if (lines.size() < kFrame || lines.front() != kJournalHead || lines.back() != kJournalEnd || !text.empty()) {
        return std::nullopt;
    }
    ImportJournal journal{.restorePoint = std::string(lines[1]), .entries = {}};
    if (EntryPath(journal.restorePoint) != journal.restorePoint) return std::nullopt;
    for (std::size_t i = 2; i + 1 < lines.size(); ++i) {
        const auto entry = ParseEntry(lines[i]);
        if (!entry) return std::nullopt;
        journal.entries.push_back(*entry);
    }
    return journal;
}

template <class Step>
WriteResult RuleImport::Retry(Step step) {
    const auto limit = m_clock.Elapsed() + kRecordFilePolicy.retries * kRecordFilePolicy.pause;
    while (true) {
        const WriteResult result = step();
        if (result != WriteResult::Denied || m_clock.Elapsed() >= limit) return result;
        if (!m_clock.Sleep(kRecordFilePolicy.pause)) return result;
    }
}

std::string RuleImport::Staged(std::string_view kind, std::size_t number) const {
    return m_folders.import + '/' + std::string(kind) + '.' + std::to_string(number);
}

ImportOutcome RuleImport::Apply(const ImportPlan& plan, Kind kind, const StopSignal& stop) {
    if (plan.fault != ArchiveFault::None || plan.files.empty()) return {.result = ImportResult::Failed};
    // Of an import that the service does not know of.
    const bool wasThere = !m_files.IsMissing(m_folders.import);
    if (!m_files.MakeFolder(m_folders.import)) return {.result = ImportResult::Held};
    ImportOutcome outcome{.result = ImportResult::Busy};
    if (const auto lock = m_files.Lock(m_folders.import + "/lock")) {
        outcome = RecoverLocked() ? ApplyLocked(plan, kind, stop)
                                  : ImportOutcome{.result = ImportResult::Held, .isHalfway = true};
    }
    if (outcome.result == ImportResult::Busy || outcome.isHalfway) return outcome;
    (void)m_files.Remove(m_folders.import + "/lock");
    if (outcome.result != ImportResult::Done && !wasThere) m_files.RemoveFolder(m_folders.import);
    return outcome;
}

bool RuleImport::Recover() {
    if (m_files.IsMissing(m_folders.import)) return false;
    {
        const auto lock = m_files.Lock(m_folders.import + "/lock");
        if (!lock) return false;
        // Even so some files may be back.
        if (!RecoverLocked()) return true;
    }
    (void)m_files.Remove(m_folders.import + "/lock");
    return true;
}

ImportOutcome RuleImport::ApplyLocked(const ImportPlan& plan, Kind kind, const StopSignal& stop) {
    ImportJournal journal;
    for (const PlannedFile& file : plan.files) {
        JournalEntry entry{
            .path = file.path, .size = file.content.size(), .crc = file.crc, .isRemoved = file.isRemoved};
        entry.wasThere = !m_files.IsMissing(Target(entry));
        journal.entries.push_back(std::move(entry));
    }
    OldFiles old;
    ImportResult result = ReadOldFiles(journal, old);
    // It is packed while the new files are on their way to the disk.
    std::future<std::optional<std::string>> restorePoint;
    if (result == ImportResult::Done) {
        restorePoint = std::async([old = std::move(old)] { return PackRestorePoint(old); });
        result = Stage(plan, journal, stop);
    }
    if (result != ImportResult::Done) {
        CleanUp();
        return {.result = result};
    }
    if (!m_files.MakeFolder(m_folders.rules) || !m_files.MakeFolder(m_folders.restore)) {
        CleanUp();
        return {.result = ImportResult::Failed};
    }
    journal.restorePoint = NewRestorePointName(m_files, m_folders.restore, m_clock.UtcNow(), kind == Kind::Undo);
    // The journal before the restore point: one without an import would be a thing to be undone that never was
    // done.
    result = ResultOf(m_files.Write(JournalPath(), FormatJournal(journal)));
    if (result == ImportResult::Done) {
        const auto bytes = restorePoint.get();
        result = bytes ? ResultOf(m_files.Write(m_folders.restore + '/' + journal.restorePoint, *bytes))
                       : ImportResult::Failed;
    }
    std::size_t moved = 0;
    if (result == ImportResult::Done) result = MoveIn(journal, moved, stop);
    // This is the moment from which the import has happened.
    if (result == ImportResult::Done && !m_files.Remove(JournalPath())) result = ImportResult::Failed;
    if (result != ImportResult::Done) {
        const bool isBack = PutBack(journal, moved) && Forget(journal);
        return {.result = result, .isHalfway = !isBack};
    }
    CleanUp();
    PruneRestorePoints(m_files, m_folders.restore);
    return {.result = ImportResult::Done,
            .restorePoint = std::move(journal.restorePoint),
            .files = std::move(journal.entries)};
}

ImportResult RuleImport::Stage(const ImportPlan& plan, const ImportJournal& journal, const StopSignal& stop) {
    for (std::size_t i = 0; i < plan.files.size(); ++i) {
        if (stop.Requested()) return ImportResult::Stopped;
        const PlannedFile& file = plan.files[i];
        const JournalEntry& entry = journal.entries[i];
        if (!file.isRemoved) {
            const WriteResult written = m_files.Write(Staged(kNew, i), file.content);
            if (written != WriteResult::Written) return ResultOf(written);
        }
        if (entry.wasThere) {
            const WriteResult kept = Retry([&] { return m_files.Keep(Target(entry), Staged(kOld, i)); });
            if (kept != WriteResult::Written) return ResultOf(kept);
        }
    }
    return ImportResult::Done;
}

ImportResult RuleImport::ReadOldFiles(const ImportJournal& journal, OldFiles& old) {
    std::uint64_t size = 0;
    for (const JournalEntry& entry : journal.entries) {
        if (!entry.wasThere) {
            old.added.push_back(entry.path);
            continue;
        }
        HeldFile file = ReadWhenFree(m_files, m_clock, Target(entry));
        if (!file.content) return ImportResult::Held;
        size += file.content->size();
        // Nobody could read it again.
        if (size > kMostUnpacked) return ImportResult::TooLarge;
        old.files.emplace_back(entry.path, *std::move(file.content));
    }
    return ImportResult::Done;
}

bool RuleImport::MakeParents(const std::string& path) {
    for (std::size_t at = path.find('/'); at != std::string::npos; at = path.find('/', at + 1)) {
        if (!m_files.MakeFolder(m_folders.rules + '/' + path.substr(0, at))) return false;
    }
    return true;
}

ImportResult RuleImport::MoveIn(const ImportJournal& journal, std::size_t& moved, const StopSignal& stop) {
    for (; moved < journal.entries.size(); ++moved) {
        if (stop.Requested()) return ImportResult::Stopped;
        const JournalEntry& entry = journal.entries[moved];
        const WriteResult result = Retry([&] {
            if (stop.Requested()) return WriteResult::Failed;  // told apart below
            if (entry.isRemoved) return m_files.Remove(Target(entry)) ? WriteResult::Written : WriteResult::Denied;
            if (!MakeParents(entry.path)) return WriteResult::Failed;
            return m_files.Replace(Staged(kNew, moved), Target(entry));
        });
        if (result == WriteResult::Written) continue;
        return stop.Requested() ? ImportResult::Stopped : ResultOf(result);
    }
    return ImportResult::Done;
}

bool RuleImport::PutBack(const ImportJournal& journal, std::size_t count) {
    bool isBack = true;
    for (std::size_t i = count; i-- > 0;) {
        const JournalEntry& entry = journal.entries[i];
        const auto isInPlace = IsInPlace(entry);
        if (isInPlace && !*isInPlace) continue;  // not moved in yet, or put back, or newer
        const auto put = [&] {
            if (!entry.wasThere) {
                return m_files.Remove(Target(entry)) ? WriteResult::Written : WriteResult::Denied;
            }
            // Without an old one it has been put back before, and was the same.
            if (m_files.IsMissing(Staged(kOld, i))) return WriteResult::Written;
            return m_files.Replace(Staged(kOld, i), Target(entry));
        };
        isBack = isInPlace && Retry(put) == WriteResult::Written && isBack;
    }
    return isBack;
}

std::optional<bool> RuleImport::IsInPlace(const JournalEntry& entry) {
    const HeldFile file = ReadWhenFree(m_files, m_clock, Target(entry));
    if (file.isMissing) return entry.isRemoved;
    if (!file.content) return std::nullopt;
    return !entry.isRemoved && file.content->size() == entry.size &&
           crc32_z(0, reinterpret_cast<const Bytef*>(file.content->data()), file.content->size()) == entry.crc;
}

bool RuleImport::RecoverLocked() {
    if (m_files.IsMissing(JournalPath())) {
        CleanUp();
        return true;
    }
    const HeldFile text = ReadWhenFree(m_files, m_clock, JournalPath());
    if (!text.content) return false;
    const auto journal = text.content->size() > kLongestJournal ? std::nullopt : ParseJournal(*text.content);
    if (!journal) {
        // It was written whole, or not at all: this is none of ours.
        if (!m_files.Remove(JournalPath())) return false;
        CleanUp();
        return true;
    }
    return PutBack(*journal, journal->entries.size()) && Forget(*journal);
}

bool RuleImport::Forget(const ImportJournal& journal) {
    // The journal last: as long as it is there, this can be done again.
    if (!m_files.Remove(m_folders.restore + '/' + journal.restorePoint)) return false;
    if (!m_files.Remove(JournalPath())) return false;
    CleanUp();
    return true;
}

void RuleImport::CleanUp() {
    for (const std::string& name : m_files.List(m_folders.import)) {
        if (name != "lock") (void)m_files.Remove(m_folders.import + '/' + name);
    }
}

}  // namespace brennvar
