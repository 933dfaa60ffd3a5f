#include "statistics/Statistics.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace brennvar {
namespace {

// 1 KB is 1024 bytes.
constexpr std::int32_t kSmallRange = 500 * 1024;
constexpr std::int32_t kMediumRange = 1000 * 1024;
constexpr std::int32_t kLargeRange = 10000 * 1024;
constexpr std::int32_t kMostAttacks = 50;  // a second

// A driver that tells of more than there can be must not make it less.
std::uint64_t Sum(std::uint64_t left, std::uint64_t right) {
    return left > std::numeric_limits<std::uint64_t>::max() - right ? std::numeric_limits<std::uint64_t>::max()
                                                                    : left + right;
}

void PushTraffic(PushGraphSamples& graph, std::uint64_t bytes) {
    graph.SetRange(TrafficRange(bytes));
    graph.Push(static_cast<std::int64_t>(std::min<std::uint64_t>(bytes, std::numeric_limits<std::int64_t>::max())),
               Statistics::kLine);
    graph.Update();
}

}  // namespace

PushGraphSamples::Range TrafficRange(std::uint64_t bytes) {
    if (bytes < kSmallRange) return {.maximum = kSmallRange, .minimumLabel = "0 KB", .maximumLabel = "500 KB"};
    if (bytes < kMediumRange) return {.maximum = kMediumRange, .minimumLabel = "0 KB", .maximumLabel = "1000 KB"};
    return {.maximum = kLargeRange, .minimumLabel = "0 KB", .maximumLabel = "10000 KB"};
}

Statistics::Statistics(AmountWords words)
    : m_words(std::move(words)),
      m_incoming(TrafficRange(0)),
      m_outgoing(TrafficRange(0)),
      m_attacks({.maximum = kMostAttacks, .minimumLabel = "0", .maximumLabel = "50"}) {
    for (PushGraphSamples* const graph : {&m_incoming, &m_outgoing, &m_attacks}) {
        graph->AddLine(kLine);
        graph->Push(0, kLine);
    }
}

void Statistics::Tick(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) {
    if (increase) {
        m_totals.bytesIn = Sum(m_totals.bytesIn, increase->bytesIn);
        m_totals.bytesOut = Sum(m_totals.bytesOut, increase->bytesOut);
        m_rates = Rates{.in = FormatRate(increase->bytesIn, milliseconds, m_words),
                        .out = FormatRate(increase->bytesOut, milliseconds, m_words)};
        PushTraffic(m_incoming, increase->bytesIn);
        PushTraffic(m_outgoing, increase->bytesOut);
        // The first tick stands for no second.
        if (!m_isFirstTick) m_recentIn.Add(increase->bytesIn, milliseconds);
        if (!m_isFirstTick) m_recentOut.Add(increase->bytesOut, milliseconds);
        PushAttacks();
    } else {
        m_rates.reset();
    }
    Changed();
}

void Statistics::PushAttacks() {
    // What came before the first tick belongs to no second.
    m_attacksOfLastTick = m_isFirstTick ? 0 : m_attackCount - m_attackCountOfLastTick;
    m_isFirstTick = false;
    m_attackCountOfLastTick = m_attackCount;
    m_attacks.Push(m_attacksOfLastTick, kLine);
    m_attacks.Update();
}

void Statistics::AddNotice(const std::string& text, FileTime now) {
    if (text.empty()) return;
    m_notices.push_front({.time = now, .text = text});
    if (m_notices.size() > kMostNotices) m_notices.pop_back();
    ++m_noticeCount;
    Changed();
}

void Statistics::SetMode(const ModeDisplay& mode) {
    if (mode == m_mode) return;
    m_mode = mode;
    Changed();
}

void Statistics::SetConnections(const std::optional<ConnectionCounts>& counts) {
    if (counts == m_connections) return;
    m_connections = counts;
    Changed();
}

void Statistics::SetPrograms(std::vector<ProgramUse> programs) {
    m_programs = std::move(programs);
}

}  // namespace brennvar
