#include "base/EndWatch.h"

#include <utility>

namespace brennvar {

EndWatch::EndWatch(std::chrono::milliseconds limit, std::function<void()> overdue) {
    try {
        m_thread = std::thread([this, limit, overdue = std::move(overdue)] {
            if (m_isOver.WaitFor(limit)) overdue();
        });
    } catch (...) {  // NOLINT(bugprone-empty-catch): the end is as likely as ever
    }
}

EndWatch::~EndWatch() {
    m_isOver.Request();
    if (m_thread.joinable()) m_thread.join();
}

}  // namespace brennvar
