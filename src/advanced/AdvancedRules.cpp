#include "advanced/AdvancedRules.h"

#include <algorithm>
#include <unordered_set>

#include "views/OptionChanges.h"

namespace brennvar {
namespace {

// What delivering one more command may take.
constexpr std::chrono::milliseconds kPerCommand{20};

// As it will be read again: fields that do not count for such a rule are not kept.
AdvancedRule AsStored(const AdvancedRule& rule) {
    return DecodeRule(EncodeRule(rule));
}

}  // namespace

AdvancedRules::AdvancedRules(Parts parts)
    : m_parts(std::move(parts)),
      m_file(
          m_parts.reads,
          [load = m_parts.load](const Request& request) {
              auto rules = load(request.pause);
              return rules ? std::optional(std::make_shared<const StoredRules>(std::move(*rules))) : std::nullopt;
          },
          [this](std::optional<std::shared_ptr<const StoredRules>> rules, const Request& request) {
              OnRead(std::move(rules), request);
          }) {}

std::uint64_t AdvancedRules::ReadAfter(std::chrono::milliseconds pause) {
    // Of those that wait only the last one is read: it is not to come sooner than the others asked for.
    if (const auto& next = m_file.Next()) pause = std::max(pause, next->pause);
    m_file.Refresh({.pause = pause, .asked = m_parts.clock.Elapsed(), .number = ++m_requests});
    return m_requests;
}

void AdvancedRules::Read() {
    Tell(Note::None);
    (void)ReadAfter(m_changes.empty() ? std::chrono::milliseconds(0) : kWritingPause);
}

void AdvancedRules::ReadAgain(std::function<void()> over) {
    m_waiting.push_back({.number = ReadAfter(kWritingPause), .over = std::move(over)});
}

void AdvancedRules::OnRead(std::optional<std::shared_ptr<const StoredRules>> rules, const Request& request) {
    m_isReadable = rules.has_value();
    if (rules) m_stored = std::move(*rules);
    if (m_changes.empty()) {
        // What had begun to arrive when it was taken for lost has come about after all.
        if (m_isReadable && m_note == Note::Lost &&
            AreStored(m_lost.changes, m_lost.expected->Rules(), m_stored->Rules())) {
            m_note = Note::None;
        }
        ShowStored();
    } else if (!m_isAsking) {
        CheckChanges(request.asked);
    }
    std::vector<Waiting> over;
    std::erase_if(m_waiting, [&](Waiting& waiting) {
        if (waiting.number > request.number) return false;
        over.push_back(std::move(waiting));
        return true;
    });
    for (const Waiting& waiting : over) waiting.over();
    FinishEdit(request.number);  // last: it may ask the user
}

void AdvancedRules::CheckChanges(std::chrono::milliseconds asked) {
    const bool areDelivered = m_open == 0;
    if (areDelivered && m_isReadable && AreStored(Changes(), m_shown->Rules(), m_stored->Rules()))
        return EndChanges(Note::None);
    const auto limit = areDelivered ? OptionChanges::kStoreLimit : m_deliveryLimit;
    if (m_isMissing || asked - m_since > limit) return EndChanges(Note::Lost);
    (void)ReadAfter(kWritingPause);
}

void AdvancedRules::EndChanges(Note note) {
    if (note == Note::Lost) {
        m_withdrawal.Withdraw();
        m_lost = {.changes = Changes(), .expected = m_shown};
    }
    m_changes.clear();
    ++m_round;
    m_open = 0;
    m_isMissing = false;
    m_deliveryLimit = {};
    m_note = note;
    ShowStored();
}

void AdvancedRules::Add(const AdvancedRule& first) {
    if (m_edited) {
        m_next = [this, first] { Add(first); };
        return;
    }
    if (std::exchange(m_isEditing, true)) return;
    if (!m_stored) Read();
    m_parts.commander.AskFor(UserCommand::AddAdvancedRule, m_alive.Guard([this, first] {
        std::optional<AdvancedRule> rule = m_parts.editor.AskNew(first);
        m_isEditing = false;
        if (!rule) return;
        rule->id = 0;
        BeginAllowed({.command = UserCommand::AddAdvancedRule, .rules = {AsStored(*rule)}});
    }),
                             m_alive.Guard([this] { m_isEditing = false; }));
}

void AdvancedRules::Edit(std::uint32_t id) {
    if (m_edited) {
        m_next = [this, id] { Edit(id); };
        return;
    }
    if (std::exchange(m_isEditing, true)) return;
    m_parts.commander.AskFor(UserCommand::ChangeAdvancedRules, m_alive.Guard([this, id] { Ask(id); }),
                             m_alive.Guard([this] { m_isEditing = false; }));
}

void AdvancedRules::Ask(std::uint32_t id) {
    const int row = m_shown ? m_shown->Find(id) : -1;
    std::optional<AdvancedRule> after;
    if (row >= 0) {
        const auto shown = m_shown;  // another reading may come while the editor is open
        after = m_parts.editor.AskChange(shown->Rule(row), {.number = static_cast<std::size_t>(row) + 1,
                                                            .count = static_cast<std::size_t>(shown->Count())});
        if (after) {
            after->id = id;
            m_edited = {.before = shown->Rule(row), .after = AsStored(*after), .number = ReadAfter({})};
        }
    }
    m_isEditing = after.has_value();
}

void AdvancedRules::FinishEdit(std::uint64_t number) {
    if (!m_edited || number < m_edited->number || !m_changes.empty()) return;
    Edited edited = std::move(*m_edited);
    m_edited.reset();
    const Language& language = m_parts.language;
    const auto agrees = [this](const std::string& question, const std::string& yes) {
        return m_parts.dialogs.Ask(question, yes, RuleDialogs::Otherwise::Cancel);
    };
    AdvancedChange change{.command = UserCommand::ChangeAdvancedRules, .rules = {std::move(edited.after)}};
    bool isWanted = true;
    // What cannot be read now is taken to be as it was.
    if (const int row = m_stored->Find(edited.before.id); row < 0) {
        isWanted = agrees(language.GetText(2060, "This rule has been deleted since you opened it."),
                          language.GetText(2061, "Add it as a new rule"));
        change.command = UserCommand::AddAdvancedRule;
        change.rules.front().id = 0;
    } else if (row >= 0 && m_stored->Rule(row) != edited.before) {
        isWanted =
            agrees(language.GetText(2062, "This rule has been changed by somebody else since you opened it."),
                   language.GetText(2063, "Save it anyway"));
    }
    m_isEditing = false;
    if (isWanted) BeginAllowed(std::move(change));
    if (const auto next = std::exchange(m_next, nullptr)) next();
}

void AdvancedRules::SetEnabled(std::span<const std::uint32_t> ids, bool isEnabled) {
    AdvancedChange change{.command = UserCommand::ChangeAdvancedRules};
    for (const int row : RowsOf(ids)) {
        AdvancedRule rule = m_shown->Rule(row);
        // A damaged one would be stored with defaults in the place of what is damaged.
        if (rule.isEnabled == isEnabled || rule.isDamaged) continue;
        rule.isEnabled = isEnabled;
        change.rules.push_back(AsStored(rule));
    }
    if (!change.rules.empty()) Begin(std::move(change));
}

void AdvancedRules::Delete(std::span<const std::uint32_t> ids) {
    AdvancedChange change{.command = UserCommand::DeleteAdvancedRules};
    for (const int row : RowsOf(ids)) change.ids.push_back(m_shown->Rule(row).id);
    if (!change.ids.empty()) Begin(std::move(change));
}

void AdvancedRules::MoveBy(std::span<const std::uint32_t> ids, int places) {
    if (m_shown) Move(brennvar::MovesBy(RowsOf(ids), m_shown->Count(), places));
}

void AdvancedRules::MoveBefore(std::span<const std::uint32_t> ids, int row) {
    if (m_shown) Move(brennvar::MovesBefore(RowsOf(ids), row));
}

void AdvancedRules::Move(std::span<const RowMove> moves) {
    AdvancedChange change{.command = UserCommand::MoveAdvancedRules};
    for (const RowMove& move : moves)
        change.moves.push_back({.id = m_shown->Rule(move.row).id, .places = move.places});
    if (change.moves.empty()) return;
    if (CommandCountOf(change) > kMostMoves) return Tell(Note::TooFar);
    Begin(std::move(change));
}

void AdvancedRules::Begin(AdvancedChange change) {
    const UserCommand command = change.command;
    Join(std::move(change));
    if (std::exchange(m_isAsking, true)) return;
    m_parts.commander.AskFor(command, m_alive.Guard([this] { OnAnswer(true); }),
                             m_alive.Guard([this] { OnAnswer(false); }));
}

void AdvancedRules::BeginAllowed(AdvancedChange change) {
    Join(std::move(change));
    Send(m_changes.back());
}

void AdvancedRules::Join(AdvancedChange change) {
    const auto& before = m_changes.empty() ? m_stored : m_shown;
    std::vector<AdvancedRule> rules = before ? before->Rules() : std::vector<AdvancedRule>();
    Apply(change, rules);
    m_changes.push_back({.change = std::move(change)});
    m_note = Note::None;
    Show(std::make_shared<const StoredRules>(std::move(rules)));
}

void AdvancedRules::OnAnswer(bool isAllowed) {
    m_isAsking = false;
    if (isAllowed) {
        for (UnderWay& change : m_changes) {
            if (!change.isSent) Send(change);
        }
        return;
    }
    std::erase_if(m_changes, [](const UnderWay& change) { return !change.isSent; });
    if (m_changes.empty()) {
        ShowStored();
    } else {
        std::vector<AdvancedRule> rules = m_stored ? m_stored->Rules() : std::vector<AdvancedRule>();
        for (const UnderWay& change : m_changes) Apply(change.change, rules);
        Show(std::make_shared<const StoredRules>(std::move(rules)));
    }
    (void)ReadAfter(kWritingPause);
}

void AdvancedRules::Send(UnderWay& change) {
    change.isSent = true;
    ++m_open;
    m_since = m_parts.clock.Elapsed();
    m_deliveryLimit =
        std::max(m_deliveryLimit, Withdrawal::kDeliveryLimit) + kPerCommand * CommandCountOf(change.change);
    m_parts.commander.Send(BatchOf(change.change),
                           m_alive.Guard([this, round = m_round](bool wasThere) { OnSent(round, wasThere); }),
                           m_withdrawal.Signal());
    (void)ReadAfter(kWritingPause);
}

void AdvancedRules::OnSent(std::uint64_t round, bool wasThere) {
    if (round == m_round) {
        --m_open;
        m_isMissing = m_isMissing || !wasThere;
        m_since = m_parts.clock.Elapsed();
    }
    // Also of one that was taken for lost: the service may have it now after all.
    (void)ReadAfter(kWritingPause);
}

void AdvancedRules::Show(std::shared_ptr<const StoredRules> rules) {
    m_shown = std::move(rules);
    if (m_watcher) m_watcher->OnRulesChanged();
}

void AdvancedRules::ShowStored() {
    Show(m_isReadable ? m_stored : std::make_shared<const StoredRules>(std::vector<AdvancedRule>(), false));
}

void AdvancedRules::Tell(Note note) {
    if (std::exchange(m_note, note) != note && m_watcher) m_watcher->OnRulesChanged();
}

std::vector<AdvancedChange> AdvancedRules::Changes() const {
    std::vector<AdvancedChange> changes;
    for (const UnderWay& change : m_changes) changes.push_back(change.change);
    return changes;
}

std::vector<int> AdvancedRules::RowsOf(std::span<const std::uint32_t> ids) const {
    const std::unordered_set<std::uint32_t> wanted(ids.begin(), ids.end());
    std::vector<int> rows;
    for (int row = 0; m_shown && row < m_shown->Count(); ++row) {
        if (wanted.contains(m_shown->Rule(row).id) && m_shown->HasName(row)) rows.push_back(row);
    }
    return rows;
}

}  // namespace brennvar
