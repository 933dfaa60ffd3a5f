// Asks what cannot be cancelled, such as the system for a name, on a thread of its own that is left behind when
// nobody waits for it any more.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "base/StopSignal.h"

namespace brennvar {

// The answer, or nothing: after the limit, within 100 ms of the stop signal, when the question throws, or when the
// system has no thread to spare. The question owns what it uses: it may end long after this call, but the end of
// the process does not wait for it.
template <class Question>
[[nodiscard]] auto AskAside(Question question, std::chrono::milliseconds limit, const StopSignal& stop)
    -> std::optional<decltype(question())> {
    using Answer = decltype(question());
    // Shared by whoever asks and whoever answers: the one that goes last frees it.
    struct Pending {
        std::mutex mutex;
        std::condition_variable changed;
        std::optional<Answer> answer;
        bool isOver = false;
    };
    constexpr std::chrono::milliseconds kSlice{20};  // between two looks at the stop signal

    const auto pending = std::make_shared<Pending>();
    try {
        std::thread([pending, question = std::move(question)]() mutable {
            std::optional<Answer> answer;
            try {
                answer.emplace(question());
            } catch (...) {  // NOLINT(bugprone-empty-catch): there is no answer, which is one
            }
            const std::lock_guard lock(pending->mutex);
            pending->answer = std::move(answer);
            pending->isOver = true;
            pending->changed.notify_all();
        }).detach();
    } catch (...) {
        return std::nullopt;
    }
    const auto end = std::chrono::steady_clock::now() + limit;
    std::unique_lock lock(pending->mutex);
    while (!pending->isOver && !stop.Requested() && std::chrono::steady_clock::now() < end) {
        pending->changed.wait_for(lock, kSlice);
    }
    if (stop.Requested()) return std::nullopt;
    return std::move(pending->answer);
}

}  // namespace brennvar
