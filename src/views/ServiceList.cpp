#include "views/ServiceList.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/AsciiCase.h"

namespace brennvar {

ServiceList::ServiceList(Parts parts, View& view)
    : m_parts(std::move(parts)),
      m_view(view),
      m_reading(
          m_parts.reads,
          [source = m_parts.source](int) -> std::optional<Result> {
              const FileStamp stamp = source->Stamp();
              auto entries = source->Read();
              if (!entries) return std::nullopt;
              return Result{.entries = *std::move(entries), .stamp = stamp};
          },
          [this](std::optional<Result> result, int reading) { OnRead(std::move(result), reading); }) {}

// What is shown

Text ServiceList::EmptyText() const {
    if (m_isUnreadable) return Text{2111, "The list cannot be read at the moment."};
    return m_isRead ? NothingListed() : Text{};
}

Text ServiceList::NoteText() const {
    if (!m_changes.empty()) return Text{1212, "Applying..."};
    if (m_note == Note::Stored) return Text{1211, "Stored."};
    if (m_note == Note::Lost) return Text{1213, "The change was not stored."};
    return {};
}

void ServiceList::ForgetNote() {
    m_note = Note::None;
}

// Adding and removing

std::string ServiceList::Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return std::string(text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1));
}

bool ServiceList::IsListed(std::string_view text) const {
    return std::any_of(m_entries.begin(), m_entries.end(), [text](const ListEntry& entry) {
        return EqualsIgnoringCase(entry.text, text) || EqualsIgnoringCase(Trimmed(entry.text), text);
    });
}

Text ServiceList::ProblemOf(std::string_view text) const {
    const std::string trimmed = Trimmed(text);
    if (trimmed.empty()) return Text{2112, "Please enter a name."};
    if (trimmed.size() > LongestText()) return TooLong();
    if (const Text further = FurtherProblem(trimmed); further.number != 0) return further;
    const bool isOnItsWay = std::any_of(m_changes.begin(), m_changes.end(), [&](const Change& change) {
        return EqualsIgnoringCase(change.added, trimmed);
    });
    return isOnItsWay || IsListed(trimmed) ? Listed() : Text{};
}

void ServiceList::Add(std::string_view text) {
    if (ProblemOf(text).number != 0) return;
    const std::string trimmed = Trimmed(text);
    SendAdded(trimmed, Begin({.added = trimmed}));
}

bool ServiceList::CanRemove(std::span<const int> places) const {
    return std::any_of(places.begin(), places.end(),
                       [this](int place) { return m_entries[static_cast<std::size_t>(place)].id != 0; });
}

void ServiceList::Remove(std::span<const int> places) {
    std::vector<std::uint32_t> ids;
    std::unordered_set<std::uint32_t> told{0};
    for (const int place : places) {
        const std::uint32_t id = m_entries[static_cast<std::size_t>(place)].id;
        if (told.insert(id).second) ids.push_back(id);
    }
    if (ids.empty()) return;
    SendRemoved(ids, Begin({.removed = ids}));
}

ServiceList::Sending ServiceList::Begin(Change change) {
    const int number = ++m_lastChange;
    change.number = number;
    std::shared_ptr<const StopSignal> withdrawn = change.withdrawal.Signal();
    m_changes.push_back(std::move(change));
    m_note = Note::None;
    m_view.StateChanged();
    return {.allowed = m_alive.Guard([this, number] { OnAllowed(number); }),
            .refused = m_alive.Guard([this, number] { OnRefused(number); }),
            .sent = m_alive.Guard([this, number](bool wasThere) { OnSent(number, wasThere); }),
            .withdrawn = std::move(withdrawn)};
}

ServiceList::Change* ServiceList::Find(int number) {
    const auto found = std::find_if(m_changes.begin(), m_changes.end(),
                                    [number](const Change& change) { return change.number == number; });
    return found == m_changes.end() ? nullptr : &*found;
}

void ServiceList::OnAllowed(int number) {
    if (Change* const change = Find(number)) change->sentAt = m_parts.clock.Elapsed();
}

void ServiceList::OnRefused(int number) {
    std::erase_if(m_changes, [number](const Change& change) { return change.number == number; });
    m_view.StateChanged();
}

void ServiceList::OnSent(int number, bool wasThere) {
    Change* const change = Find(number);
    if (!change) return;  // given up before
    // A service that is not there writes nothing that could be waited for.
    change->readAfter = m_parts.clock.Elapsed() + (wasThere ? WritingTime() : std::chrono::milliseconds(0));
    change->isDelivered = wasThere;
    Follow();
}

// Reading

void ServiceList::Watch() {
    if (m_reading.IsReading()) return;
    const FileStamp stamp = m_parts.source->Stamp();
    if (m_stamp != stamp || stamp.IsFresh(m_parts.clock.UtcNow())) Read();
}

void ServiceList::Follow() {
    const std::chrono::milliseconds now = m_parts.clock.Elapsed();
    bool isDue = false;
    for (Change& change : m_changes) {
        if (!change.readAfter && change.sentAt) change.readAfter = *change.sentAt + Withdrawal::kDeliveryLimit;
        if (change.reading != 0 || !change.readAfter || *change.readAfter > now) continue;
        // Before the reading, which tells what has come of it: nothing of it arrives behind that. Should the
        // service take later what it has already been sent, the file changes.
        if (!change.isDelivered) change.withdrawal.Withdraw();
        change.reading = m_lastReading + 1;
        isDue = true;
    }
    if (isDue) Read();
}

void ServiceList::Read() {
    m_reading.Refresh(++m_lastReading);
}

void ServiceList::OnRead(std::optional<Result> result, int reading) {
    const bool isOther = m_isUnreadable == result.has_value() || (result && !m_isRead);
    m_isUnreadable = !result;
    m_stamp.reset();
    if (result) {
        m_stamp = result->stamp;
        m_isRead = true;
    }
    // Nothing is taken from the user's eyes because a file is held for a moment.
    if (isOther || (result && result->entries != m_entries)) {
        m_view.BeforeEntriesChange(*this);
        if (result) m_entries = std::move(result->entries);
        m_view.AfterEntriesChange(*this);
    }
    if (result) Judge(reading);
    m_view.StateChanged();
}

void ServiceList::Judge(int reading) {
    bool isDelivered = false;
    std::erase_if(m_changes, [&](const Change& change) {
        if (change.reading == 0 || change.reading > reading) return false;
        m_note = IsStored(change) ? Note::Stored : Note::Lost;
        isDelivered |= change.isDelivered;
        return true;
    });
    if (isDelivered) m_view.ChangeIsOver(*this);
}

bool ServiceList::IsStored(const Change& change) const {
    if (!change.added.empty()) return IsListed(change.added);
    return std::none_of(m_entries.begin(), m_entries.end(), [&](const ListEntry& entry) {
        return std::find(change.removed.begin(), change.removed.end(), entry.id) != change.removed.end();
    });
}

}  // namespace brennvar
