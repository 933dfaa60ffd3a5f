// What flowed in each of the last ticks, for the peak and the average of what a graph shows. User-interface thread
// only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>

namespace brennvar {

class RecentTraffic {
public:
    // As many as a graph may have samples (PushGraphSamples::kMostSamples).
    static constexpr std::size_t kMostTicks = 4096;

    struct Rates {  // bytes a second
        std::uint64_t peak = 0;
        std::uint64_t average = 0;
        friend bool operator==(const Rates&, const Rates&) = default;
    };

    // So many bytes in so many milliseconds. A tick without any time is left out: it has no rate.
    void Add(std::uint64_t bytes, std::uint64_t milliseconds);
    // Of the last so many ticks, or of all when there are fewer.
    [[nodiscard]] Rates OfLast(std::size_t ticks) const;

private:
    struct Tick {
        std::uint64_t bytes;
        std::uint64_t milliseconds;
    };
    std::deque<Tick> m_ticks;
};

}  // namespace brennvar
