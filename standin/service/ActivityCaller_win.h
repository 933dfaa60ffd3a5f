// Puts the requests of the scenario to the interface's queue pipe, one after the other, on a thread of its own: a
// question may stand for long, and the scenario goes on. Every answer stands in the journal.
#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <thread>

#include "base/Handles_win.h"
#include "ipc/ActivityQueue.h"
#include "service/Journal_win.h"
#include "service/Stop_win.h"

namespace brennvar::standin {

class ActivityCaller {
public:
    ActivityCaller(const Stop& stop, Journal& journal, Progress& progress);
    ActivityCaller(const ActivityCaller&) = delete;
    ActivityCaller& operator=(const ActivityCaller&) = delete;
    // The stop has to be requested before.
    ~ActivityCaller();

    void Put(const ActivityQueueMessage& request);

private:
    void Run();
    [[nodiscard]] UniqueFile Connect() const;
    // Nothing when the interface has let the client go without an answer.
    [[nodiscard]] std::optional<ActivityQueueMessage> Exchange(HANDLE pipe, ActivityQueueMessage request) const;

    const Stop& m_stop;
    Journal& m_journal;
    Progress& m_progress;
    const UniqueEvent m_done{::CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    const UniqueEvent m_put{::CreateEventA(nullptr, FALSE, FALSE, nullptr)};
    std::mutex m_lock;  // guards the requests
    std::deque<ActivityQueueMessage> m_requests;
    std::thread m_thread;  // last: it uses everything above
};

}  // namespace brennvar::standin
