// The road of rules to and from archives: the password, the question where to, the work on a thread of its own, the
// preview, and what becomes of it. One at a time: what is asked for meanwhile is not begun. User-interface thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "base/StopSignal.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/Commander.h"
#include "dialogs/MailWish.h"
#include "rules/RestorePoints.h"
#include "rules/RuleImport.h"
#include "views/RuleDialogs.h"
#include "views/RuleSets.h"

namespace brennvar {

// A page of rules, which shows what happens to them.
class RuleExchangeWatcher {
public:
    virtual ~RuleExchangeWatcher() = default;
    // It is busy now or not any more, or what can be taken back is something else.
    virtual void OnExchangeChanged() = 0;
    // The rules have been replaced, and the service has been told: after a pause they can be read again.
    virtual void OnRulesReplaced() = 0;
};

// Who shows the advanced rules, which are read again before the service is told to.
class AdvancedRulesReader {
public:
    virtual ~AdvancedRulesReader() = default;
    // Reads them when the service has had the time to write, and shows them; then calls back.
    virtual void ReadAgain(std::function<void()> over) = 0;
};

// The archive that a chosen path stands for: the folder, the name without its extension, ".fxz". Nothing: the name
// is empty.
[[nodiscard]] std::optional<std::string> ArchivePathOf(std::string_view chosen);

class RuleExchange {
public:
    // All are borrowed. The queue's clock: its waits end with the queue.
    struct Parts {
        const Language& language;
        TaskQueue& queue;
        Clock& clock;
        Commander& commander;
        RuleDialogs& dialogs;
        AdvancedRulesReader& advanced;
        RuleFiles& files;
        RuleFolders folders;
    };
    explicit RuleExchange(Parts parts) : m_parts(std::move(parts)) {}
    RuleExchange(const RuleExchange&) = delete;
    RuleExchange& operator=(const RuleExchange&) = delete;

    // Each is told from now on, until it ends with Unwatch.
    void Watch(RuleExchangeWatcher& watcher) { m_watchers.push_back(&watcher); }
    void Unwatch(RuleExchangeWatcher& watcher) { std::erase(m_watchers, &watcher); }
    // Who sends an exported archive, borrowed; null: it is not offered.
    void SendWith(MailForms* mail) { m_mail = mail; }

    // Once, when the program begins: puts right what an import left that ended in the middle, and looks for what
    // can be taken back.
    void Begin();

    void Export(RuleSet set);
    void Import(RuleSet set);
    // Puts back what was there before the last import, or before the last time that this was done. When the rules
    // have changed since, the user sees first what would become of them. set: of the page.
    void Undo(RuleSet set);

    enum class Work : std::uint8_t { None, Exporting, Importing };
    // What is being done on the other thread; none while the user is asked.
    [[nodiscard]] Work Current() const { return m_work; }
    void Stop();

    // What Undo would put back on the page of this set; null: nothing of it.
    [[nodiscard]] const RestorePoint* Undoable(RuleSet set) const;
    // The last thing that was done to these rules here since the program began, and can be taken back.
    enum class Last : std::uint8_t { None, Imported, Undone };
    [[nodiscard]] Last LastDone(RuleSet set) const { return Undoable(set) ? m_last : Last::None; }

private:
    // A restore point, and whose rules it holds.
    struct Restorable {
        RestorePoint point;
        std::vector<RuleSet> sets;
    };
    struct Exported;
    struct Opened;
    struct Applied;
    struct Begun;

    [[nodiscard]] bool BeginFlow();
    void EndFlow();
    void SetWork(Work work);
    void Tell(const std::string& text) { m_parts.dialogs.Tell(text); }

    void AskWhereToExport(RuleSet set);
    void WriteArchive(RuleSet set, const std::string& path, bool mayReplace);
    void OnExported(RuleSet set, const std::string& path, const std::optional<Exported>& exported);
    void OfferMail(const std::string& path);

    void AskWhatToImport(RuleSet set);
    void OpenRestorePoint(RuleSet set);
    void OnOpened(RuleSet set, RuleImport::Kind kind, std::optional<Opened> opened);
    void Apply(RuleSet set, const std::shared_ptr<const ImportPlan>& plan, RuleImport::Kind kind);
    void OnApplied(RuleSet set, const std::shared_ptr<const ImportPlan>& plan, RuleImport::Kind kind,
                   const std::optional<Applied>& applied);
    // Has it read the rules of these sets again, one after the other. wasThere: it was, for those before; what is
    // not told now is told at the next start.
    void TellService(std::vector<RuleSet> sets, bool wasThere = true);
    void TellOfChange() const;
    // The one with this name, else the newest; reads it.
    [[nodiscard]] static std::optional<Restorable> FindRestorable(RuleFiles& files, const RuleFolders& folders,
                                                                  const std::string& name);
    [[nodiscard]] std::string Describe(const ImportPlan& plan) const;
    [[nodiscard]] std::string Describe(const ImportOutcome& outcome) const;

    const Parts m_parts;
    std::vector<RuleExchangeWatcher*> m_watchers;
    MailForms* m_mail = nullptr;
    bool m_isUnderWay = false;  // from the password on
    Work m_work = Work::None;
    std::shared_ptr<StopSignal> m_stop;  // of the work; shared with it
    std::optional<Restorable> m_undoable;
    std::vector<JournalEntry> m_done;  // what it made of the files
    Last m_last = Last::None;
    WhileAlive m_alive;
};

}  // namespace brennvar
