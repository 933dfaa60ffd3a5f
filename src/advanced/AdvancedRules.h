// The advanced rules, and every change of them: each asks for the security password, is sent as one batch, and
// shows at once. When the service has had time to write (kWritingPause) the file is read, and what is stored is
// what is shown. User-interface thread only; nothing here waits, but for the editor.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "advanced/AdvancedChange.h"
#include "advanced/RuleEditor.h"
#include "advanced/RuleMoves.h"
#include "advanced/StoredRules.h"
#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/Commander.h"
#include "commands/Withdrawal.h"
#include "config/Language.h"
#include "rules/AdvancedRule.h"
#include "views/RuleDialogs.h"
#include "views/RuleExchange.h"

namespace brennvar {

// Who shows them.
class AdvancedRulesWatcher {
public:
    virtual ~AdvancedRulesWatcher() = default;
    // Shown or Note say something else.
    virtual void OnRulesChanged() = 0;
};

class AdvancedRules final : public AdvancedRulesReader {
public:
    // Reads the file, on the queue, after this pause; blocks.
    using Load = std::function<std::optional<std::vector<AdvancedRule>>(std::chrono::milliseconds pause)>;
    // All are borrowed for the life of the program. The clock is the user-interface thread's.
    struct Parts {
        const Language& language;
        Clock& clock;
        TaskQueue& reads;
        Load load;
        Commander& commander;
        RuleEditor& editor;
        RuleDialogs& dialogs;
    };
    explicit AdvancedRules(Parts parts);
    AdvancedRules(const AdvancedRules&) = delete;
    AdvancedRules& operator=(const AdvancedRules&) = delete;

    // The service moves a rule by one place with each command: so many at most in one change.
    static constexpr int kMostMoves = 1000;

    // One at a time; null: nobody any more.
    void Watch(AdvancedRulesWatcher* watcher) { m_watcher = watcher; }
    // As they were read last, with the changes that are under way; null: not read yet.
    [[nodiscard]] const std::shared_ptr<const StoredRules>& Shown() const { return m_shown; }
    // What became of the last change, where that is not plain; until the next one, or until they are read anew.
    enum class Note : std::uint8_t {
        None,
        Lost,    // the service was not there, or has refused it
        TooFar,  // more than kMostMoves: nothing was sent
    };
    [[nodiscard]] Note LastNote() const { return m_note; }

    // An edit that the user has agreed to waits for the reading that tells whether the rule is still there: it is
    // neither shown nor sent yet. What Add or Edit is asked for meanwhile follows it, the last of several.
    [[nodiscard]] bool IsSaving() const { return m_edited.has_value(); }

    void Read();
    void ReadAgain(std::function<void()> over) override;

    // The password, the editor with these fields, then commands 4 and 7. The service puts a new rule behind the
    // others.
    void Add(const AdvancedRule& first);
    // The password, the editor, then commands 5 and 7. When the rule has gone or has become another one meanwhile,
    // the user is told and asked what to do.
    void Edit(std::uint32_t id);
    // Identifiers of no rule, and 0, are passed over in all of these.
    void SetEnabled(std::span<const std::uint32_t> ids, bool isEnabled);  // 5 for each that is otherwise, then 7
    void Delete(std::span<const std::uint32_t> ids);                      // 6 for each, then 7
    // So many places towards the end, or with a negative number towards the beginning: 31 or 30 for each place of
    // each rule, then 7. Rules that move together keep their order, and stop at the first or the last place.
    void MoveBy(std::span<const std::uint32_t> ids, int places);
    // The same to before this row, as they are shown; their number: behind all.
    void MoveBefore(std::span<const std::uint32_t> ids, int row);

private:
    struct Request {
        std::chrono::milliseconds pause{};
        std::chrono::milliseconds asked{};  // Clock::Elapsed
        std::uint64_t number = 0;           // of the request
    };
    struct UnderWay {
        AdvancedChange change;
        bool isSent = false;  // else it waits for the password
    };
    struct Lost {
        std::vector<AdvancedChange> changes;
        std::shared_ptr<const StoredRules> expected;  // as they were shown
    };
    struct Edited {
        AdvancedRule before;
        AdvancedRule after;
        std::uint64_t number;  // the request whose reading tells whether the rule is still there
    };
    struct Waiting {
        std::uint64_t number;  // the request that is waited for
        std::function<void()> over;
    };

    std::uint64_t ReadAfter(std::chrono::milliseconds pause);
    void OnRead(std::optional<std::shared_ptr<const StoredRules>> rules, const Request& request);
    void CheckChanges(std::chrono::milliseconds asked);
    void EndChanges(Note note);
    void Ask(std::uint32_t id);
    void FinishEdit(std::uint64_t number);

    // Shows it, and asks for the password.
    void Begin(AdvancedChange change);
    // The same for what the password has been asked for.
    void BeginAllowed(AdvancedChange change);
    void Join(AdvancedChange change);
    void OnAnswer(bool isAllowed);
    void Send(UnderWay& change);
    void OnSent(std::uint64_t round, bool wasThere);

    void Show(std::shared_ptr<const StoredRules> rules);
    // What is stored, or that it cannot be read.
    void ShowStored();
    void Tell(Note note);
    [[nodiscard]] std::vector<AdvancedChange> Changes() const;
    // Those that commands can be sent for, in their order.
    [[nodiscard]] std::vector<int> RowsOf(std::span<const std::uint32_t> ids) const;
    void Move(std::span<const RowMove> moves);

    const Parts m_parts;
    AdvancedRulesWatcher* m_watcher = nullptr;
    std::shared_ptr<const StoredRules> m_stored;  // as they could be read last; null: not yet
    bool m_isReadable = true;                     // the last reading
    std::shared_ptr<const StoredRules> m_shown;
    Note m_note = Note::None;
    bool m_isEditing = false;  // from the password until it is sent
    std::optional<Edited> m_edited;
    std::function<void()> m_next;  // to be added or edited after that

    // They are over together: when all have been delivered, and are stored or lost.
    std::vector<UnderWay> m_changes;
    bool m_isAsking = false;              // for the password of those that are not sent
    std::uint64_t m_round = 0;            // so many times they were over
    Withdrawal m_withdrawal;              // of this round
    Lost m_lost;                          // those that the note speaks of
    int m_open = 0;                       // sent, and neither delivered nor given up
    bool m_isMissing = false;             // one was given up
    std::chrono::milliseconds m_since{};  // the last one was sent, or delivered
    std::chrono::milliseconds m_deliveryLimit{};

    std::uint64_t m_requests = 0;
    std::vector<Waiting> m_waiting;
    Refreshed<std::shared_ptr<const StoredRules>, Request> m_file;
    WhileAlive m_alive;
};

}  // namespace brennvar
