#include "views/RuleExchange.h"

#include <algorithm>
#include <utility>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

// What files of planned paths hold now, read from the folder.
class FolderFiles final : public CurrentFiles {
public:
    FolderFiles(RuleFiles& files, Clock& clock, const std::string& folder)
        : m_files(files), m_clock(clock), m_folder(folder) {}
    std::optional<std::string> Content(const std::string& path) override {
        if (m_isHeld) return std::nullopt;  // what comes of it is of no use any more
        HeldFile file = ReadWhenFree(m_files, m_clock, m_folder + '/' + path);
        m_isHeld = !file.content && !file.isMissing;
        return std::move(file.content);
    }
    // One of them is there and cannot be read.
    [[nodiscard]] bool IsHeld() const { return m_isHeld; }

private:
    RuleFiles& m_files;
    Clock& m_clock;
    const std::string& m_folder;
    bool m_isHeld = false;
};

std::vector<RuleSet> SetsOf(const ImportPlan& plan) {
    std::vector<RuleSet> sets;
    for (const RuleSet set : {RuleSet::Applications, RuleSet::Advanced}) {
        const auto isOfSet = [set](const PlannedFile& file) {
            return EqualsIgnoringCase(file.path, InfoOf(set).entry);
        };
        if (std::any_of(plan.files.begin(), plan.files.end(), isOfSet)) sets.push_back(set);
    }
    return sets;
}

// The one with this name, else the newest.
std::optional<RestorePoint> ChooseRestorePoint(RuleFiles& files, const RuleFolders& folders,
                                               const std::string& name) {
    const auto points = FindRestorePoints(files, folders.restore);
    const auto named =
        std::find_if(points.begin(), points.end(), [&](const RestorePoint& point) { return point.name == name; });
    if (named != points.end()) return *named;
    return points.empty() ? std::nullopt : std::optional(points.front());
}

// Of which pages the rules are that the restore point would put back.
std::vector<RuleSet> SetsOf(const RestorePoint& point, RuleFiles& files, const RuleFolders& folders) {
    const auto bytes = files.Read(folders.restore + '/' + point.name, kLongestArchive);
    auto sets = SetsOf(PlanRestore(bytes.value_or(std::string())));
    if (sets.empty()) sets.push_back(RuleSet::Applications);  // it has to be offered somewhere
    return sets;
}

// Whether the files are still what an import made of them; nothing when one cannot be read.
std::optional<bool> AreInPlace(RuleImport& import, const std::vector<JournalEntry>& files) {
    for (const JournalEntry& file : files) {
        const auto isInPlace = import.IsInPlace(file);
        if (!isInPlace || !*isInPlace) return isInPlace;
    }
    return true;
}

}  // namespace

struct RuleExchange::Opened {
    std::shared_ptr<const ImportPlan> plan;
    ImportPreview preview{};
    bool isHeld = false;   // the rules that are there cannot be read
    bool isPlain = false;  // it puts back what was there before what is there now
};
struct RuleExchange::Begun {
    bool isUntold = false;
    std::optional<Restorable> undoable;
};
struct RuleExchange::Applied {
    ImportOutcome outcome;
    std::optional<Restorable> undoable;
};

std::optional<RuleExchange::Restorable> RuleExchange::FindRestorable(RuleFiles& files, const RuleFolders& folders,
                                                                     const std::string& name) {
    auto point = ChooseRestorePoint(files, folders, name);
    if (!point) return std::nullopt;
    auto sets = SetsOf(*point, files, folders);
    return Restorable{.point = std::move(*point), .sets = std::move(sets)};
}

const RestorePoint* RuleExchange::Undoable(RuleSet set) const {
    if (!m_undoable) return nullptr;
    const auto& sets = m_undoable->sets;
    return std::find(sets.begin(), sets.end(), set) == sets.end() ? nullptr : &m_undoable->point;
}

std::optional<std::string> ArchivePathOf(std::string_view chosen) {
    const std::size_t folderEnd = chosen.find_last_of("\\/:");
    const std::size_t nameStart = folderEnd == std::string_view::npos ? 0 : folderEnd + 1;
    std::string_view name = chosen.substr(nameStart);
    name = name.substr(0, name.rfind('.'));
    if (name.empty()) return std::nullopt;
    return std::string(chosen.substr(0, nameStart)).append(name).append(kArchiveExtension);
}

void RuleExchange::Begin() {
    m_parts.queue.Ask<Begun>(
        [&files = m_parts.files, &clock = m_parts.clock, folders = m_parts.folders]() -> Begun {
            const bool isUntold = RuleImport(files, clock, folders).Recover();
            return {.isUntold = isUntold, .undoable = FindRestorable(files, folders, {})};
        },
        m_alive.Guard([this](std::optional<Begun> begun) {
            if (!begun) return;
            // Which rules that import had, nobody knows any more.
            if (begun->isUntold) TellService({RuleSet::Applications, RuleSet::Advanced});
            if (m_last != Last::None) return;
            m_undoable = std::move(begun->undoable);
            TellOfChange();
        }));
}

void RuleExchange::TellService(std::vector<RuleSet> sets, bool wasThere) {
    if (sets.empty()) {
        // Whether it is there to be told is seen in what is read then.
        for (RuleExchangeWatcher* const watcher : m_watchers) watcher->OnRulesReplaced();
        if (!wasThere) return;
        m_parts.queue.Post([&files = m_parts.files, &clock = m_parts.clock, folders = m_parts.folders] {
            RuleImport(files, clock, folders).ServiceKnows();
        });
        return;
    }
    const RuleSet first = sets.front();
    sets.erase(sets.begin());
    auto tell = m_alive.Guard([this, first, wasThere, rest = std::move(sets)] {
        m_parts.commander.Send(Batch(InfoOf(first).import), m_alive.Guard([this, wasThere, rest](bool isThere) {
            TellService(rest, wasThere && isThere);
        }));
    });
    if (first == RuleSet::Advanced) return m_parts.advanced.ReadAgain(std::move(tell));
    tell();
}

bool RuleExchange::BeginFlow() {
    return !std::exchange(m_isUnderWay, true);
}

void RuleExchange::EndFlow() {
    m_isUnderWay = false;
    SetWork(Work::None);
}

void RuleExchange::SetWork(Work work) {
    m_work = work;
    m_stop = work == Work::None ? nullptr : std::make_shared<StopSignal>();
    TellOfChange();
}

void RuleExchange::TellOfChange() const {
    for (RuleExchangeWatcher* const watcher : m_watchers) watcher->OnExchangeChanged();
}

void RuleExchange::Stop() {
    if (m_stop) m_stop->Request();
}

void RuleExchange::Import(RuleSet set) {
    if (!BeginFlow()) return;
    m_parts.commander.AskFor(InfoOf(set).import, m_alive.Guard([this, set] { AskWhatToImport(set); }),
                             m_alive.Guard([this] { EndFlow(); }));
}

void RuleExchange::AskWhatToImport(RuleSet set) {
    const Language& language = m_parts.language;
    const auto chosen = m_parts.dialogs.AskOpenPath(
        {.title = language.GetText(1832, "Import rules"),
         .name = InfoOf(set).name + std::string(kArchiveExtension),
         .types = {{.label = language.GetText(1833, "Rule archives"), .extension = "fxz"}}});
    const auto path = chosen ? ArchivePathOf(*chosen) : std::nullopt;
    if (chosen && !path) Tell(language.GetText(132, "Please enter file name."));
    if (!path) return EndFlow();
    SetWork(Work::Importing);
    m_parts.queue.Ask<Opened>(
        [&files = m_parts.files, &clock = m_parts.clock, folders = m_parts.folders, path = *path]() -> Opened {
            const auto bytes = files.Read(path, kLongestArchive);
            auto plan = std::make_shared<const ImportPlan>(PlanImport(bytes.value_or(std::string())));
            FolderFiles current(files, clock, folders.rules);
            ImportPreview preview = PreviewImport(*plan, current);
            return {.plan = std::move(plan), .preview = std::move(preview), .isHeld = current.IsHeld()};
        },
        m_alive.Guard([this, set](std::optional<Opened> opened) {
            OnOpened(set, RuleImport::Kind::Import, std::move(opened));
        }));
}

void RuleExchange::OnOpened(RuleSet set, RuleImport::Kind kind, std::optional<Opened> opened) {
    const bool wasStopped = m_stop->Requested();
    SetWork(Work::None);
    // Out of memory, at worst.
    if (!opened) Tell(m_parts.language.GetText(1850, "The rules could not be imported. They are as they were."));
    if (!opened || wasStopped) return EndFlow();
    if (opened->plan->fault != ArchiveFault::None) {
        if (opened->plan->fault != ArchiveFault::NotOpened) {
            Tell(Describe(*opened->plan));
        } else if (kind == RuleImport::Kind::Undo) {
            Tell(m_parts.language.GetText(1850, "The rules could not be imported. They are as they were."));
        }  // A chosen archive that cannot be opened reports nothing.
        return EndFlow();
    }
    if (opened->isHeld) {
        Tell(m_parts.language.GetText(1847, "The rules are held by the service at the moment. Please try again."));
        return EndFlow();
    }
    if (!opened->isPlain && !m_parts.dialogs.AskImport(ImportRows(m_parts.language, std::move(opened->preview)))) {
        return EndFlow();
    }
    Apply(set, std::move(opened->plan), kind);
}

void RuleExchange::Undo(RuleSet set) {
    if (!Undoable(set) || !BeginFlow()) return;
    m_parts.commander.AskFor(InfoOf(set).import, m_alive.Guard([this, set] { OpenRestorePoint(set); }),
                             m_alive.Guard([this] { EndFlow(); }));
}

void RuleExchange::OpenRestorePoint(RuleSet set) {
    if (!m_undoable) return EndFlow();
    SetWork(Work::Importing);
    m_parts.queue.Ask<Opened>(
        [&files = m_parts.files, &clock = m_parts.clock, folders = m_parts.folders, done = m_done,
         point = m_undoable->point.name]() -> Opened {
            const auto bytes = files.Read(folders.restore + '/' + point, kLongestArchive);
            auto plan = std::make_shared<const ImportPlan>(PlanRestore(bytes.value_or(std::string())));
            RuleImport import(files, clock, folders);
            // Of what was put in before the program began nothing is known, and the user has been asked.
            const auto isPlain = AreInPlace(import, done);
            if (!isPlain || *isPlain) {
                return {.plan = std::move(plan), .isHeld = !isPlain, .isPlain = isPlain.value_or(false)};
            }
            FolderFiles current(files, clock, folders.rules);
            ImportPreview preview = PreviewImport(*plan, current);
            return {.plan = std::move(plan), .preview = std::move(preview), .isHeld = current.IsHeld()};
        },
        m_alive.Guard([this, set](std::optional<Opened> opened) {
            OnOpened(set, RuleImport::Kind::Undo, std::move(opened));
        }));
}

void RuleExchange::Apply(RuleSet set, const std::shared_ptr<const ImportPlan>& plan, RuleImport::Kind kind) {
    SetWork(Work::Importing);
    m_parts.queue.Ask<Applied>(
        [&files = m_parts.files, &clock = m_parts.clock, folders = m_parts.folders, plan, kind,
         stop = m_stop]() -> Applied {
            Applied applied;
            applied.outcome = RuleImport(files, clock, folders).Apply(*plan, kind, *stop);
            applied.undoable = FindRestorable(files, folders, applied.outcome.restorePoint);
            return applied;
        },
        m_alive.Guard([this, set, plan, kind](const std::optional<Applied>& applied) {
            OnApplied(set, plan, kind, applied);
        }));
}

void RuleExchange::OnApplied(RuleSet set, const std::shared_ptr<const ImportPlan>& plan, RuleImport::Kind kind,
                             const std::optional<Applied>& applied) {
    const ImportOutcome outcome = applied ? applied->outcome : ImportOutcome{.result = ImportResult::Failed};
    const bool isDone = outcome.result == ImportResult::Done;
    if (isDone) {
        m_last = kind == RuleImport::Kind::Undo ? Last::Undone : Last::Imported;
        m_done = outcome.files;
    }
    if (applied) m_undoable = applied->undoable;
    SetWork(Work::None);
    if (isDone || outcome.isHalfway) {
        std::vector<RuleSet> sets = SetsOf(*plan);
        // The page's own, whatever it was that the user imported there.
        const bool isMeant = kind == RuleImport::Kind::Import || sets.empty();
        if (isMeant && std::find(sets.begin(), sets.end(), set) == sets.end()) sets.push_back(set);
        TellService(std::move(sets), isDone);
    }
    if (!isDone && (outcome.result != ImportResult::Stopped || outcome.isHalfway)) Tell(Describe(outcome));
    EndFlow();
}

std::string RuleExchange::Describe(const ImportPlan& plan) const {
    const Language& language = m_parts.language;
    const auto why = [&] {
        switch (plan.fault) {
            case ArchiveFault::Enciphered: return language.GetText(1840, "The archive needs a password.");
            case ArchiveFault::UnknownMethod:
                return language.GetText(1841, "The archive is packed in a way that is not known here.");
            case ArchiveFault::TooLarge:
                return language.GetText(1842, "The archive holds far more than rules can be.");
            case ArchiveFault::SameNameTwice:
                return language.GetText(1843, "The archive holds the same file twice.");
            case ArchiveFault::Empty: return language.GetText(1844, "There are no rules in this archive.");
            default: return language.GetText(1845, "The archive is damaged.");
        }
    };
    std::string text = why() + ' ' + language.GetText(1846, "The rules are as they were.");
    if (plan.faultyEntry.empty()) return text;
    // Somebody else's text: short, and no more than one line of it.
    constexpr std::size_t kLongestName = 100;
    std::string name = plan.faultyEntry.substr(0, kLongestName);
    for (char& c : name) c = static_cast<unsigned char>(c) < ' ' ? '?' : c;
    return text + '\n' + language.GetText(1851, "It is about:") + ' ' + name;
}

std::string RuleExchange::Describe(const ImportOutcome& outcome) const {
    const Language& language = m_parts.language;
    if (outcome.isHalfway) {
        return language.GetText(
            1852, "Not all of the import could be taken back. This is tried again when the program starts.");
    }
    switch (outcome.result) {
        case ImportResult::Held:
            return language.GetText(
                1853, "The rules are held by the service, or may not be written. They are as they were.");
        case ImportResult::Busy:
            return language.GetText(1854, "Another user is importing rules. Please try again.");
        case ImportResult::TooLarge:
            return language.GetText(
                1875,
                "The rules that are there now are too large to be kept, so that the import could "
                "not be taken back. They are as they were.");
        case ImportResult::DiskFull: return language.GetText(1855, "The disk is full. The rules are as they were.");
        default: return language.GetText(1850, "The rules could not be imported. They are as they were.");
    }
}

}  // namespace brennvar
