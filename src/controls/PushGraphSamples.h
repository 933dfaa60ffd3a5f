// What a scrolling line graph shows, and its arithmetic: a short history of numbers for each line, the range that
// the plot's height stands for, and a grid that moves with the samples. One sample is so many pixels from the next;
// places are pixels, counted from the left edge and the bottom of the plot.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace brennvar {

class PushGraphSamples {
public:
    struct Range {
        std::int32_t minimum = 0;
        std::int32_t maximum = 1;
        std::string minimumLabel{};
        std::string maximumLabel{};
    };
    struct Line {
        int id = 0;
        std::vector<std::int32_t> samples{};  // oldest first
    };

    // A line keeps no more than this while nobody paints it: a plot of 40,000 pixels, wider than any window.
    static constexpr std::size_t kMostSamples = 4096;
    // At 96 pixels per inch.
    static constexpr int kDefaultInterval = 10;
    static constexpr int kGridSpacing = 20;

    explicit PushGraphSamples(Range range) : m_range(std::move(range)) {}

    // From one sample and from one grid line to the next, pixels of the screen, at least 1.
    void SetPixels(int interval, int gridSpacing);
    // For the samples that come from now on: those that are there already stay as they are.
    void SetRange(Range range) {
        m_range = std::move(range);
        ++m_version;
    }
    // Without effect when there is such a line.
    void AddLine(int id);

    // One more sample of a line, moved into the range. A line that does not exist is left out.
    void Push(std::int64_t value, int lineId);
    // The grid goes as far as the next painting will move the samples; called once after the pushes of a tick.
    void Update();
    // For painting: learns how many samples this width shows, makes all lines equally long and drops what has
    // scrolled out at the left.
    void PrepareToPaint(int plotWidth);

    [[nodiscard]] const Range& GetRange() const { return m_range; }
    [[nodiscard]] const std::vector<Line>& Lines() const { return m_lines; }
    [[nodiscard]] int Interval() const { return m_interval; }
    [[nodiscard]] int GridSpacing() const { return m_gridSpacing; }
    // Of the first grid line, from 0 to below the spacing.
    [[nodiscard]] int GridOffset() const { return m_gridOffset; }
    // Another number whenever something of this has changed.
    [[nodiscard]] std::uint64_t Version() const { return m_version; }
    // So far above the bottom of the plot. More than the plot's height for a sample of a larger range.
    [[nodiscard]] int HeightOf(std::int32_t sample, int plotHeight) const;

private:
    [[nodiscard]] std::size_t LongestLine() const;

    Range m_range;
    std::vector<Line> m_lines;
    int m_interval = kDefaultInterval;
    int m_gridSpacing = kGridSpacing;
    int m_gridOffset = 0;
    int m_visibleCount = 0;
    std::uint64_t m_version = 0;
};

// Samples that it takes to reach from the left edge past the right one.
[[nodiscard]] int VisibleSampleCount(int plotWidth, int interval);

}  // namespace brennvar
