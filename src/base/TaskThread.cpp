#include "base/TaskThread.h"

#include <utility>

namespace brennvar {
namespace {

// Nothing may leave a thread's function or hold up the next task.
void RunAndDropExceptions(const TaskThread::Task& task) noexcept {
    if (!task) return;
    try {
        task();
    } catch (...) {  // NOLINT(bugprone-empty-catch): what fails shows in what is missing
    }
}

}  // namespace

TaskThread::TaskThread(std::function<void()> wake) : m_wake(std::move(wake)) {}

TaskThread::~TaskThread() {
    Stop(std::chrono::milliseconds(0));
}

void TaskThread::Post(Task task, Task completion) {
    std::list<Job> job;
    job.push_back({.task = std::move(task), .completion = std::move(completion)});
    {
        const std::lock_guard lock(m_mutex);
        if (m_isEnding) return;
        if (m_threadId == std::thread::id()) {
            m_thread = std::thread([this] { Run(); });
            m_threadId = m_thread.get_id();
        }
        m_jobs.splice(m_jobs.end(), job);
    }
    m_changed.notify_all();
}

void TaskThread::RunCompletions() {
    std::unique_lock lock(m_mutex);
    // Only what is waiting now: a busy thread must not keep the window from its messages.
    for (std::size_t count = m_completions.size(); count > 0 && !m_completions.empty(); --count) {
        std::list<Job> first;
        first.splice(first.end(), m_completions, m_completions.begin());
        lock.unlock();
        RunAndDropExceptions(first.front().completion);
        first.clear();
        lock.lock();
    }
}

bool TaskThread::IsOnThread() {
    const std::lock_guard lock(m_mutex);
    return std::this_thread::get_id() == m_threadId;
}

bool TaskThread::WaitUntilIdle(std::chrono::milliseconds limit) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, limit, [this] { return m_isEnding || (m_jobs.empty() && !m_isBusy); });
}

void TaskThread::RequestStop(std::chrono::milliseconds limit) {
    if (!IsOnThread()) (void)WaitUntilIdle(limit);
    std::list<Job> dropped;  // destroyed without the lock: a task may own anything
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        dropped.swap(m_jobs);
    }
    m_stop.Request();
    m_changed.notify_all();
}

void TaskThread::Stop(std::chrono::milliseconds limit) {
    RequestStop(limit);
    if (IsOnThread()) return;
    const std::lock_guard joinLock(m_joinMutex);
    if (m_thread.joinable()) m_thread.join();
}

void TaskThread::Run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] { return m_isEnding || !m_jobs.empty(); });
        if (m_jobs.empty()) return;
        // Jobs go from list to list: nothing of it needs memory, of which there may be none.
        std::list<Job> job;
        job.splice(job.end(), m_jobs, m_jobs.begin());
        m_isBusy = true;
        lock.unlock();
        RunAndDropExceptions(job.front().task);
        job.front().task = {};  // what it holds goes on the thread that used it
        if (job.front().completion) Finish(job);
        job.clear();
        lock.lock();
        m_isBusy = false;
        m_changed.notify_all();
    }
}

void TaskThread::Finish(std::list<Job>& job) {
    {
        const std::lock_guard lock(m_mutex);
        m_completions.splice(m_completions.end(), job);
    }
    RunAndDropExceptions(m_wake);
}

}  // namespace brennvar
