// A thread that does for the user-interface thread what may have to wait, one task after another. One such thread
// talks to the service, so that a missing service never freezes a window and commands arrive in the order in which
// they were given; another one reads files and the driver's tables.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "base/StopSignal.h"
#include "base/TaskQueue.h"

namespace brennvar {

class TaskThread final : public TaskQueue {
public:
    // wake is called on the thread whenever a completion is waiting; the window posts itself a message there
    // and then calls RunCompletions. It must not wait for the window's thread, which may be inside Stop. What it
    // throws is dropped: the completion then waits for the next RunCompletions.
    explicit TaskThread(std::function<void()> wake);
    // Stops without letting queued tasks run. Not on the thread.
    ~TaskThread() override;
    TaskThread(const TaskThread&) = delete;
    TaskThread& operator=(const TaskThread&) = delete;

    // Any thread. Completions run inside RunCompletions. The thread begins with the first task. Without memory, or
    // when the system has no thread to spare, it throws, and nothing has been posted.
    void Post(Task task, Task completion = {}) override;

    // User-interface thread: runs the completions that are waiting. A completion may call it again (a dialog that
    // pumps messages does). What a completion throws is dropped.
    void RunCompletions();

    // Requested by RequestStop; what the tasks wait with (connectors, clocks) is built on it.
    [[nodiscard]] const StopSignal& Stopping() const { return m_stop; }

    // True when nothing is done or waits to be done, false when that still is so after the limit. Not on the
    // thread.
    [[nodiscard]] bool WaitUntilIdle(std::chrono::milliseconds limit);
    // Lets queued tasks finish for at most limit, then requests the stop, which cuts waits short, and drops what
    // has not started. A task that heeds no stop may go on: what it uses must stay until Stop has returned. May be
    // called again, from several threads, and on the thread itself, where it waits for nothing. Completions of
    // finished tasks stay for RunCompletions.
    void RequestStop(std::chrono::milliseconds limit);
    // The same, and joins, which takes as long as the task under way: for when what it uses goes. On the thread
    // itself it cannot join.
    void Stop(std::chrono::milliseconds limit);

private:
    struct Job {
        Task task;
        Task completion;
    };

    [[nodiscard]] bool IsOnThread();
    void Run();
    // Takes the job, of which only the completion is left.
    void Finish(std::list<Job>& job);

    const std::function<void()> m_wake;
    StopSignal m_stop;
    std::mutex m_joinMutex;  // one thread joins, the others wait for it

    std::mutex m_mutex;  // guards everything below
    std::condition_variable m_changed;
    std::list<Job> m_jobs;
    std::list<Job> m_completions;  // their tasks are done
    bool m_isBusy = false;
    bool m_isEnding = false;

    std::thread::id m_threadId;  // none before the first task

    std::thread m_thread;  // last: it uses everything above. Begun under m_mutex, joined under m_joinMutex
};

}  // namespace brennvar
