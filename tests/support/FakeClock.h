// A clock that tests move by hand. Sleeping moves it and is recorded.
#pragma once

#include <functional>
#include <vector>

#include "base/Clock.h"

namespace brennvar::test {

class FakeClock final : public Clock {
public:
    FileTime now = 132'000'000'000'000'000;  // some moment in 2019
    LocalDate today{.year = 2026, .month = 3, .day = 9};
    std::chrono::milliseconds elapsed{1000};
    std::vector<std::chrono::milliseconds> sleeps;
    bool stopped = false;                     // what a requested stop does to every wait
    int slowness = 1;                         // every pause takes so many times as long
    std::function<void()> whenSlept = [] {};  // what happens meanwhile

    [[nodiscard]] FileTime UtcNow() const override { return now; }
    [[nodiscard]] LocalDate Today() const override { return today; }
    [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return elapsed; }
    void Pass(std::chrono::milliseconds duration) {
        now += static_cast<FileTime>(duration.count()) * (kFileTimePerSecond / 1000);
        elapsed += duration;
    }
    bool Sleep(std::chrono::milliseconds duration) override {
        sleeps.push_back(duration);
        Pass(duration * slowness);
        whenSlept();
        return !stopped;
    }
};

}  // namespace brennvar::test
