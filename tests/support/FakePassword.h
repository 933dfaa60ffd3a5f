// The user before the password question: answers as the test says, at once or later.
#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "commands/AskPassword.h"

namespace brennvar::test {

class FakePassword final : public AskPassword {
public:
    enum class Answer { Allow, Refuse, Later };
    Answer answer = Answer::Allow;
    int asked = 0;

    void Ask(std::function<void()> allowed, std::function<void()> refused) override {
        ++asked;
        m_waiting.push_back({std::move(allowed), std::move(refused)});
        if (answer != Answer::Later) Give(answer == Answer::Allow);
    }
    // The first question that waits.
    void Give(bool isAllowed) {
        const Waiting waiting = std::move(m_waiting.front());
        m_waiting.pop_front();
        const auto& outcome = isAllowed ? waiting.allowed : waiting.refused;
        if (outcome) outcome();
    }

private:
    struct Waiting {
        std::function<void()> allowed;
        std::function<void()> refused;
    };
    std::deque<Waiting> m_waiting;
};

}  // namespace brennvar::test
