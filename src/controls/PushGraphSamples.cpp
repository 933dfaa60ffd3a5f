#include "controls/PushGraphSamples.h"

#include <algorithm>

namespace brennvar {
namespace {

// Where the stored numbers begin; a graph whose minimum is another one stores distances from there.
constexpr std::int64_t kBase = 0;

}  // namespace

int VisibleSampleCount(int plotWidth, int interval) {
    // One more than the gaps between them, and another one that is on its way in; a gap that is cut counts.
    const int spare = plotWidth % interval != 0 ? 3 : 2;
    return std::max(1, plotWidth / interval + spare);
}

void PushGraphSamples::SetPixels(int interval, int gridSpacing) {
    m_interval = std::max(1, interval);
    m_gridSpacing = std::max(1, gridSpacing);
    m_gridOffset = 0;
    ++m_version;
}

void PushGraphSamples::AddLine(int id) {
    const bool isThere =
        std::any_of(m_lines.begin(), m_lines.end(), [id](const Line& line) { return line.id == id; });
    if (isThere) return;
    m_lines.push_back({.id = id});
    ++m_version;
}

void PushGraphSamples::Push(std::int64_t value, int lineId) {
    const std::int64_t inRange =
        std::max<std::int64_t>(m_range.minimum, std::min<std::int64_t>(value, m_range.maximum));
    for (Line& line : m_lines) {
        if (line.id != lineId) continue;
        ++m_version;
        if (line.samples.size() == kMostSamples) line.samples.erase(line.samples.begin());
        line.samples.push_back(static_cast<std::int32_t>(inRange + kBase - m_range.minimum));
    }
}

std::size_t PushGraphSamples::LongestLine() const {
    std::size_t longest = 0;
    for (const Line& line : m_lines) longest = std::max(longest, line.samples.size());
    return longest;
}

void PushGraphSamples::Update() {
    const auto samples = static_cast<int>(LongestLine());
    if (m_visibleCount == 0 || samples < m_visibleCount) return;
    const int offset = (m_gridOffset - (samples - m_visibleCount + 1) * m_interval) % m_gridSpacing;
    m_gridOffset = offset < 0 ? offset + m_gridSpacing : offset;
    ++m_version;
}

void PushGraphSamples::PrepareToPaint(int plotWidth) {
    m_visibleCount = VisibleSampleCount(plotWidth, m_interval);
    for (const Line& line : m_lines) {
        if (line.samples.empty()) Push(m_range.minimum, line.id);
    }
    const std::size_t longest = LongestLine();
    const auto most = static_cast<std::size_t>(m_visibleCount - 1);
    for (Line& line : m_lines) {
        if (line.samples.size() == longest && longest <= most) continue;
        line.samples.resize(longest, line.samples.back());
        if (longest > most) {
            line.samples.erase(line.samples.begin(), line.samples.end() - static_cast<std::ptrdiff_t>(most));
        }
        ++m_version;
    }
}

int PushGraphSamples::HeightOf(std::int32_t sample, int plotHeight) const {
    const std::int64_t length = std::int64_t{m_range.maximum} - m_range.minimum;
    if (length <= 0) return 0;
    // Points far outside the plot stay within what can be drawn; the part inside comes out the same.
    constexpr std::int64_t kFarthest = 16384;
    return static_cast<int>(std::min(kFarthest, sample * std::int64_t{plotHeight} / length));
}

}  // namespace brennvar
