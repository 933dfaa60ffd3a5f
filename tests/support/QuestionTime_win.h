// The time that a question has been on the screen, moved by hand.
#pragma once

#include <utility>

#include "prompts/QuestionStand_win.h"

namespace brennvar::test {

inline ULONGLONG g_questionTime = 0;

inline void PassQuestionTime(ULONGLONG milliseconds) {
    g_questionTime += milliseconds;
}

// Questions go by it for as long as this object lasts.
class QuestionTime {
public:
    QuestionTime() : m_real(std::exchange(QuestionStand::s_tickCount, [] { return g_questionTime; })) {}
    QuestionTime(const QuestionTime&) = delete;
    QuestionTime& operator=(const QuestionTime&) = delete;
    ~QuestionTime() { QuestionStand::s_tickCount = m_real; }

private:
    ULONGLONG (*const m_real)();
};

}  // namespace brennvar::test
