// Time and waiting, as a seam: tests replace it, so that a test of thirty retries takes no time.
#pragma once

#include <chrono>
#include <cstdint>

namespace brennvar {

// UTC in 100-nanosecond units since 1601-01-01, as Windows counts it (FILETIME).
using FileTime = std::uint64_t;
inline constexpr FileTime kFileTimePerSecond = 10'000'000;

// A day on the local calendar; the logs are named after it.
struct LocalDate {
    int year = 0;   // four digits
    int month = 0;  // 1-12
    int day = 0;    // 1-31
    friend bool operator==(const LocalDate&, const LocalDate&) = default;
};

class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual FileTime UtcNow() const = 0;
    [[nodiscard]] virtual LocalDate Today() const = 0;
    // Since some moment before the program began; it runs evenly, whatever becomes of the system's clock, and on
    // while the machine sleeps. For how long something takes, to some 16 ms.
    [[nodiscard]] virtual std::chrono::milliseconds Elapsed() const = 0;
    // False when the wait was cut short because the program stops; retry loops then give up.
    virtual bool Sleep(std::chrono::milliseconds duration) = 0;
};

}  // namespace brennvar
