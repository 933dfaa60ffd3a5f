// A thread that does for the user-interface thread what may have to wait, one task after another. One such thread
// talks to the service, so that a missing service never freezes a window and commands arrive in the order in which
// they were given; another one reads files and the driver's tables.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "base/StopSignal.h"

namespace brennvar {

class LinkThread {
public:
    using Task = std::function<void()>;

    // wake is called on the link thread whenever a completion is waiting; the window posts itself a message there
    // and then calls RunCompletions. It must not wait for the window's thread, which may be inside Stop. What it
    // throws is dropped: the completion then waits for the next RunCompletions.
    explicit LinkThread(std::function<void()> wake);
    // Stops without letting queued tasks run. Not on the link thread.
    ~LinkThread();
    LinkThread(const LinkThread&) = delete;
    LinkThread& operator=(const LinkThread&) = delete;

    // Any thread. The task runs on the link thread, first come, first served; what it throws is dropped, for
    // failures of the link are silent. The completion runs afterwards, in either case, inside RunCompletions, in
    // the order of the tasks. After the stop both are dropped.
    void Post(Task task, Task completion = {});

    // The same for a task with a result: done gets it, or nothing when the task has thrown.
    template <class Result>
    void Ask(std::function<Result()> task, std::function<void(std::optional<Result>)> done) {
        const auto result = std::make_shared<std::optional<Result>>();
        Post([result, task = std::move(task)] { *result = task(); },
             [result, done = std::move(done)] { done(std::move(*result)); });
    }

    // User-interface thread: runs the completions that are waiting. A completion may call it again (a dialog that
    // pumps messages does). What a completion throws is dropped.
    void RunCompletions();

    // Requested by Stop; what the tasks wait with (connectors, clocks) is built on it.
    [[nodiscard]] const StopSignal& Stopping() const { return m_stop; }

    // Lets queued tasks finish for at most limit, then requests the stop, which cuts waits short, drops what has
    // not started and joins. May be called again and from several threads; on the link thread itself it drops and
    // requests, but cannot join. Completions of finished tasks stay for RunCompletions.
    void Stop(std::chrono::milliseconds limit);

private:
    struct Job {
        Task task;
        Task completion;
    };

    void Run();
    void Finish(Task completion);

    const std::function<void()> m_wake;
    StopSignal m_stop;
    std::mutex m_joinMutex;  // one thread joins, the others wait for it; taken before m_mutex

    std::mutex m_mutex;  // guards everything below
    std::condition_variable m_changed;
    std::deque<Job> m_jobs;
    std::deque<Task> m_completions;
    bool m_isBusy = false;
    bool m_isEnding = false;

    std::thread m_thread;  // last: it uses everything above
    const std::thread::id m_threadId;
};

}  // namespace brennvar
