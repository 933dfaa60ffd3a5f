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
        auto asked = std::make_unique<Asked<Result>>(std::move(task));
        std::optional<Result>& result = asked->result;
        PostSteps(std::move(asked), std::make_unique<Told<Result>>(result, std::move(done)));
    }

private:
    // A task or a completion, behind a name that does not tell its type: nearly all of what a question with an
    // answer takes of the program would be there once more for each type of answers.
    struct Step {
        virtual ~Step() = default;
        virtual void Do() = 0;
    };
    template <class Result>
    struct Asked final : Step {
        explicit Asked(std::function<Result()> asked) : task(std::move(asked)) {}
        void Do() override {
            // What the task holds goes with it, on the queue's thread.
            const auto once = std::exchange(task, {});
            result.emplace(once());
        }

        std::function<Result()> task;
        std::optional<Result> result;
    };
    template <class Result>
    struct Told final : Step {
        Told(std::optional<Result>& told, std::function<void(std::optional<Result>)> then)
            : result(told), done(std::move(then)) {}
        void Do() override { done(std::move(result)); }

        std::optional<Result>& result;  // in the task, which the completion keeps
        std::function<void(std::optional<Result>)> done;
    };
    void PostSteps(std::unique_ptr<Step> task, std::unique_ptr<Step> completion) {
        const std::shared_ptr<Step> asked = std::move(task), told = std::move(completion);
        Post([asked] { asked->Do(); }, [asked, told] { told->Do(); });
    }
};

}  // namespace brennvar
