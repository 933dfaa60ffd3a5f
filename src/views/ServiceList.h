// A list of the service that the Options page shows and changes: what it holds, what may be added, and what has
// become of a change. The list shows what is stored and nothing else: a change is sent, the service gets the time
// to write, and the file is read again. User-interface thread only; nothing here waits.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/StopSignal.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/Commander.h"
#include "commands/Withdrawal.h"
#include "config/FileStamp.h"
#include "config/Text.h"

namespace brennvar {

struct ListEntry {
    std::uint32_t id = 0;  // 0: none
    std::string text{};
    friend bool operator==(const ListEntry&, const ListEntry&) = default;
};

// Where a list stands: a file of the service in the program. Any thread.
class ListSource {
public:
    virtual ~ListSource() = default;
    // In the order of the file; may wait for the service. Nothing when it could not be read.
    [[nodiscard]] virtual std::optional<std::vector<ListEntry>> Read() const = 0;
    // Without waiting.
    [[nodiscard]] virtual FileStamp Stamp() const = 0;
};

class ServiceList {
public:
    // Borrowed for the life of the program, but for the source, which a reading may need longer than the list.
    struct Parts {
        Commander& commander;
        TaskQueue& reads;
        const Clock& clock;
        std::shared_ptr<const ListSource> source;
    };
    // Who shows it.
    class View {
    public:
        virtual ~View() = default;
        // Around every change of the entries: what is selected can be found again by their texts.
        virtual void BeforeEntriesChange(const ServiceList& list) = 0;
        virtual void AfterEntriesChange(const ServiceList& list) = 0;
        // The note is another one, or IsFollowing.
        virtual void StateChanged() = 0;
        // A change has been delivered, and the list has been read again.
        virtual void ChangeIsOver(const ServiceList& list) = 0;
    };

    ServiceList(Parts parts, View& view);
    ServiceList(const ServiceList&) = delete;
    ServiceList& operator=(const ServiceList&) = delete;
    virtual ~ServiceList() = default;

    [[nodiscard]] const std::vector<ListEntry>& Entries() const { return m_entries; }
    // In place of entries, when there are none.
    [[nodiscard]] Text EmptyText() const;
    // What has become of the last change, in one line; no text where there is nothing to say.
    [[nodiscard]] Text NoteText() const;
    void ForgetNote();

    // The text as it would be added, without blanks around it.
    [[nodiscard]] static std::string Trimmed(std::string_view text);
    // Why this cannot be added; no text: it can.
    [[nodiscard]] Text ProblemOf(std::string_view text) const;
    // Adds it, trimmed. Nothing happens where there is a problem.
    void Add(std::string_view text);
    // Some of the entries can be removed. Places in Entries.
    [[nodiscard]] bool CanRemove(std::span<const int> places) const;
    // Removes those that can be; each identifier is told once.
    void Remove(std::span<const int> places);

    // Reads the list.
    void Reload() { Read(); }
    // Reads it when it has changed; to be called every second while it is seen.
    void Watch();
    // A change is not over: Follow is to be called every 100 ms or so.
    [[nodiscard]] bool IsFollowing() const { return !m_changes.empty(); }
    void Follow();

    // The column's title, and the longest text that can be added, in bytes.
    [[nodiscard]] virtual Text Title() const = 0;
    [[nodiscard]] virtual std::size_t LongestText() const = 0;
    // Entries are paths of programs.
    [[nodiscard]] virtual bool HoldsPrograms() const { return false; }

protected:
    [[nodiscard]] Commander& Sender() const { return m_parts.commander; }
    // What becomes of a change on its way: the user has been asked for the password, or it has gone.
    struct Sending {
        std::function<void()> allowed;
        std::function<void()> refused;
        Sent sent;
        std::shared_ptr<const StopSignal> withdrawn;
    };

private:
    // An entry that is to be there, or identifiers that are not.
    struct Change {
        int number = 0;
        std::string added{};
        std::vector<std::uint32_t> removed{};
        // By the clock's Elapsed; each is known when it has come to that.
        std::optional<std::chrono::milliseconds> sentAt{};
        std::optional<std::chrono::milliseconds> readAfter{};
        bool isDelivered = false;
        Withdrawal withdrawal{};
        int reading = 0;  // the one that can tell what has become of it; 0: it has not begun
    };
    enum class Note { None, Stored, Lost };
    // What the file looked like before it was read: a change that comes meanwhile shows as another stamp.
    struct Result {
        std::vector<ListEntry> entries;
        FileStamp stamp;
    };

    [[nodiscard]] virtual Text NothingListed() const = 0;
    [[nodiscard]] virtual Text TooLong() const = 0;
    [[nodiscard]] virtual Text Listed() const = 0;
    // Beside emptiness, length and what is listed.
    [[nodiscard]] virtual Text FurtherProblem(std::string_view /*text*/) const { return {}; }
    // What the service needs until its file can be read again.
    [[nodiscard]] virtual std::chrono::milliseconds WritingTime() const = 0;
    virtual void SendAdded(const std::string& text, Sending sending) = 0;
    // Lists without identifiers are never asked.
    virtual void SendRemoved(std::vector<std::uint32_t> /*ids*/, Sending /*sending*/) {}

    [[nodiscard]] Change* Find(int number);
    [[nodiscard]] bool IsListed(std::string_view text) const;
    [[nodiscard]] Sending Begin(Change change);
    void OnAllowed(int number);
    void OnRefused(int number);
    void OnSent(int number, bool wasThere);
    void Read();
    void OnRead(std::optional<Result> result, int reading);
    void Judge(int reading);
    [[nodiscard]] bool IsStored(const Change& change) const;

    const Parts m_parts;
    View& m_view;
    std::vector<ListEntry> m_entries;
    bool m_isRead = false;
    bool m_isUnreadable = false;
    std::optional<FileStamp> m_stamp;  // before the last reading; none when that failed
    std::vector<Change> m_changes;     // that are not over, in their order
    int m_lastChange = 0;
    int m_lastReading = 0;
    Note m_note = Note::None;
    // Asked for with its number.
    Refreshed<Result, int> m_reading;
    WhileAlive m_alive;
};

// The programs that may act without a question: "trusted.conf". Single ones cannot be removed.
class TrustedList final : public ServiceList {
public:
    using ServiceList::ServiceList;
    [[nodiscard]] Text Title() const override;
    [[nodiscard]] std::size_t LongestText() const override;
    [[nodiscard]] bool HoldsPrograms() const override { return true; }

private:
    [[nodiscard]] Text NothingListed() const override;
    [[nodiscard]] Text TooLong() const override;
    [[nodiscard]] Text Listed() const override;
    [[nodiscard]] std::chrono::milliseconds WritingTime() const override;
    void SendAdded(const std::string& text, Sending sending) override;
};

// The sites that browsers are kept from: "domain.conf".
class FilteredSites final : public ServiceList {
public:
    using ServiceList::ServiceList;
    [[nodiscard]] Text Title() const override;
    [[nodiscard]] std::size_t LongestText() const override;

private:
    [[nodiscard]] Text NothingListed() const override;
    [[nodiscard]] Text TooLong() const override;
    [[nodiscard]] Text Listed() const override;
    [[nodiscard]] Text FurtherProblem(std::string_view text) const override;
    [[nodiscard]] std::chrono::milliseconds WritingTime() const override;
    void SendAdded(const std::string& text, Sending sending) override;
    void SendRemoved(std::vector<std::uint32_t> ids, Sending sending) override;
};

}  // namespace brennvar
