// Where the user-interface thread hands over what may have to wait. The real one is a thread (TaskThread); tests
// have one that does a task when they say so.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace brennvar {

class TaskQueue {
public:
    using Task = std::function<void()>;

    virtual ~TaskQueue() = default;

    // The task is done on the queue's thread, first come, first served; what it throws is dropped. The completion
    // runs afterwards, in either case, on the user-interface thread, later than this call, in the order of the
    // tasks. When the queue stops before, both are dropped.
    virtual void Post(Task task, Task completion = {}) = 0;

    // The same for a task with a result: done gets it, or nothing when the task has thrown.
    template <class Result>
    void Ask(std::function<Result()> task, std::function<void(std::optional<Result>)> done) {
        const auto result = std::make_shared<std::optional<Result>>();
        Post([result, task = std::move(task)] { *result = task(); },
             [result, done = std::move(done)] { done(std::move(*result)); });
    }
};

}  // namespace brennvar
