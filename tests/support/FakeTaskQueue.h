// A queue whose tasks are done when the test says so.
#pragma once

#include <cstddef>
#include <deque>
#include <utility>

#include "base/TaskQueue.h"

namespace brennvar::test {

class FakeTaskQueue final : public TaskQueue {
public:
    void Post(Task task, Task completion) override {
        m_jobs.push_back({.task = std::move(task), .completion = std::move(completion)});
    }

    [[nodiscard]] std::size_t Waiting() const { return m_jobs.size(); }
    // The first one, with what it throws dropped; its completion waits.
    void DoTask() {
        try {
            m_jobs.front().task();
        } catch (...) {  // as a queue does
        }
        m_completions.push_back(std::move(m_jobs.front().completion));
        m_jobs.pop_front();
    }
    void Complete() {
        const Task completion = std::move(m_completions.front());
        m_completions.pop_front();
        if (completion) completion();
    }
    // One task with its completion.
    void Run() {
        DoTask();
        Complete();
    }
    // Until nothing waits any more.
    void RunAll() {
        while (!m_jobs.empty()) Run();
    }

private:
    struct Job {
        Task task;
        Task completion;
    };
    std::deque<Job> m_jobs;
    std::deque<Task> m_completions;
};

}  // namespace brennvar::test
