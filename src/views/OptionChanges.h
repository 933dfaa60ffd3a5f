// What becomes of the sections of options that the user applies: one after the other is sent, delivered, and then
// either stored or lost. Knows neither window nor service: it is told of events, and says what comes next and what
// to show.
#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <map>
#include <optional>

#include "base/Clock.h"
#include "commands/Withdrawal.h"
#include "views/FormDraft.h"

namespace brennvar {

class OptionChanges {
public:
    // A section with everything that stood in its fields.
    struct Change {
        std::size_t section = 0;
        FormDraft::Fields fields;
        int number = 0;           // given when it begins; none is used twice
        Withdrawal withdrawal{};  // it is sent with its signal; when it is lost, it is withdrawn
    };
    enum class Note { None, UnderWay, Stored, Lost };

    // How long the service may take to rewrite its file after the last command: some 200 ms, and patience for a
    // busy machine.
    static constexpr std::chrono::milliseconds kStoreLimit{1000};

    // The clock is borrowed.
    explicit OptionChanges(const Clock& clock) : m_clock(clock) {}

    // The user applies a section. It is carried out after those that were applied before; one of the same section
    // that still waits gives way to it.
    void Want(std::size_t section, FormDraft::Fields fields);
    // Begins the next change, which is then to be sent; null while one is under way or none waits.
    [[nodiscard]] const Change* Begin();

    // The user has been asked for the password, where there is one, and the change is on its way.
    void OnSent();
    // It will not be sent. What waits of the same section is not asked for a second time.
    void OnRefused();
    // Nothing of it is left to be sent. One that was given up long ago says nothing about its successor: false.
    bool OnDelivered(int number);
    // The change that has been sent; null without one.
    [[nodiscard]] const Change* Sent() const { return m_isSent ? &*m_current : nullptr; }
    // What is stored should be read to see what has become of it.
    [[nodiscard]] bool NeedsReading() const;
    // It has been read. asked: when that reading was asked for, by the clock's Elapsed; one from before a limit is
    // no proof that a change was lost. Returns the change that is over, none while it goes on.
    std::optional<Change> OnRead(bool isStored, std::chrono::milliseconds asked);

    // Of the last change of a section.
    [[nodiscard]] Note NoteOf(std::size_t section) const;
    // The user has applied these fields, and it is not over.
    [[nodiscard]] bool Covers(std::size_t section, const FormDraft::Fields& fields) const;
    // How the last change ended need not be shown any more: of one section, of all.
    void Forget(std::size_t section) { m_ended.erase(section); }
    void ForgetAll() { m_ended.clear(); }

private:
    // The last one of the section that is not over.
    [[nodiscard]] const Change* Last(std::size_t section) const;
    void EraseWaiting(std::size_t section);

    const Clock& m_clock;
    std::optional<Change> m_current;
    bool m_isSent = false;  // the current one; the times below count from then
    bool m_isDelivered = false;
    std::chrono::milliseconds m_since{};  // it was sent, or delivered
    std::deque<Change> m_waiting;
    std::map<std::size_t, Note> m_ended;
    int m_count = 0;
};

}  // namespace brennvar
