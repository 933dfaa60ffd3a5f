#include "base/ClockCheck.h"

#include <utility>

namespace brennvar {
namespace {

// Ticks come every second, but a busy machine may hold several of them back.
constexpr FileTime kLongestStep = 20 * kFileTimePerSecond;

}  // namespace

ClockCheck::Jump ClockCheck::Tick(FileTime now) {
    const FileTime before = std::exchange(m_lastSeen, now);
    if (std::exchange(m_skipNext, false)) return Jump::None;
    if (now < before) return Jump::Past;
    return now - before > kLongestStep ? Jump::Future : Jump::None;
}

}  // namespace brennvar
