// The changes that the user makes on the Applications page, on their way to the service: in the order in which they
// were made, behind the security password. Each has a number, from 1 upwards, by which the page knows whether it is
// still under way. User-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "commands/Commander.h"
#include "commands/Withdrawal.h"

namespace brennvar {

// Told when changes are over, see ApplicationChanges::Over.
class ApplicationChangesWatcher {
public:
    virtual ~ApplicationChangesWatcher() = default;
    virtual void OnChangesOver() = 0;
};

class ApplicationChanges {
public:
    // So many are sent at a time, and the next ones only then: what the user commands meanwhile, to block all
    // traffic or to end the program, does not come behind thousands of them.
    static constexpr std::size_t kPiece = 16;
    // The commander is borrowed for the life of the program.
    explicit ApplicationChanges(Commander& commander) : m_commander(commander) {}
    ApplicationChanges(const ApplicationChanges&) = delete;
    ApplicationChanges& operator=(const ApplicationChanges&) = delete;

    // A change that was made; its number. It waits for Carry.
    std::uint64_t Add(ApplicationChange change);
    // Sends what waits, once the password is there. Changes that come until then go with it; when it is refused,
    // all of them are dropped.
    void Carry();

    // The service is missing, and the user is shown what is stored: what was sent and has not been delivered is
    // withdrawn, and over.
    void GiveUp();

    // The number of the last change, and that of the last one that was delivered, given up or refused with all
    // before it. What the service made of it is for the rules file to tell.
    [[nodiscard]] std::uint64_t Last() const { return m_last; }
    [[nodiscard]] std::uint64_t Over() const { return m_over; }

    // Who is told when Over has grown, borrowed for as long as anything is sent.
    void Watch(ApplicationChangesWatcher& watcher) { m_watcher = &watcher; }

private:
    struct Group {
        std::vector<ApplicationChange> changes;
        std::uint64_t last;    // number of the last one
        std::size_t sent = 0;  // so many of them
    };
    void Enqueue();
    void SendPiece();
    void OnPieceSent(bool wasThere);

    Commander& m_commander;
    ApplicationChangesWatcher* m_watcher = nullptr;
    std::vector<ApplicationChange> m_waiting;
    std::deque<Group> m_groups;  // allowed; the first one is being sent
    Withdrawal m_withdrawal;     // of what has been sent of them
    unsigned m_round = 0;        // so many times they were given up
    bool m_isAsking = false;
    std::uint64_t m_last = 0;
    std::uint64_t m_over = 0;
};

}  // namespace brennvar
