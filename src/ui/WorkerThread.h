// One long job at a time, off the user-interface thread. When the job is over, a function is called on the job's
// thread (it posts a message to a window); the receiver then calls Stop on the thread that owns this object.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "base/StopSignal.h"

namespace brennvar {

class CWorkerThread {
public:
    using Job = std::function<void(const StopSignal& stop)>;

    explicit CWorkerThread(std::function<void()> finished);
    CWorkerThread(const CWorkerThread&) = delete;
    CWorkerThread& operator=(const CWorkerThread&) = delete;
    ~CWorkerThread();

    // False, and the job is dropped, while an earlier one has not been stopped. A job looks at its stop signal
    // wherever it can take long; what it throws ends it.
    [[nodiscard]] bool Start(Job job);
    // From Start until the job is over.
    [[nodiscard]] bool Running() const { return m_running; }
    // Asks the job to end, and waits for nothing: Start is refused until it has been stopped.
    void RequestStop();
    // Asks the job to end and waits for it without a limit; afterwards another one can be started.
    void Stop();

private:
    void Run(const Job& job);

    const std::function<void()> m_finished;
    std::unique_ptr<StopSignal> m_stop;  // one per job: a signal cannot be taken back
    std::atomic<bool> m_running = false;
    std::thread m_thread;
};

}  // namespace brennvar
