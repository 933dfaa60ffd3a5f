#include "base/SystemClock.h"

#include "base/Windows_win.h"

namespace brennvar {

// In steps of some 16 ms, but it counts the time that the machine sleeps on every system. The performance counter,
// which steady_clock is made of, does so on some only.
std::chrono::milliseconds SystemClock::Elapsed() const {
    return std::chrono::milliseconds(::GetTickCount64());
}

}  // namespace brennvar
