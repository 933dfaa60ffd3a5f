#include "statistics/ProgramTraffic.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/AsciiCase.h"
#include "statistics/TrafficMeter.h"

namespace brennvar {
namespace {

// The tables are read every 2 s while anybody sees what they tell. In 34 s a gigabit line fills a counter of 32
// bits.
constexpr std::chrono::seconds kLongestMeasure{10};

void Add(ProgramSum& sum, const ProgramSum& more) {
    sum.bytesIn += more.bytesIn;
    sum.bytesOut += more.bytesOut;
}

}  // namespace

std::vector<ProgramTraffic::Counter> ProgramTraffic::CountersOf(std::span<const ConnectionEntry> connections) {
    std::vector<Counter> counters;
    counters.reserve(connections.size());
    for (const ConnectionEntry& entry : connections) {
        counters.push_back({.ends = {.localAddress = entry.localAddress,
                                     .remoteAddress = entry.remoteAddress,
                                     .localPort = entry.localPort,
                                     .remotePort = entry.remotePort,
                                     .processId = entry.processId},
                            .bytesIn = entry.bytesIn,
                            .bytesOut = entry.bytesOut});
    }
    std::ranges::sort(counters, {}, &Counter::ends);
    std::size_t last = 0;
    for (std::size_t at = 1; at < counters.size(); ++at) {
        if (counters[at].ends == counters[last].ends) {
            counters[last].bytesIn += counters[at].bytesIn;
            counters[last].bytesOut += counters[at].bytesOut;
            ++counters[last].connections;
        } else {
            counters[++last] = counters[at];
        }
    }
    if (!counters.empty()) counters.resize(last + 1);
    return counters;
}

std::vector<const ProgramTraffic::Counter*> ProgramTraffic::Before(const std::vector<Counter>& now) const {
    std::vector<const Counter*> before;
    before.reserve(now.size());
    auto old = m_counters.begin();
    for (const Counter& counter : now) {
        while (old != m_counters.end() && old->ends < counter.ends) ++old;
        before.push_back(old != m_counters.end() && old->ends == counter.ends ? &*old : nullptr);
    }
    return before;
}

// Ends those that are no longer there, or may be others by now.
void ProgramTraffic::BeginProcesses(const std::vector<Counter>& now, const std::vector<const Counter*>& before) {
    std::unordered_set<std::uint32_t> stayed;
    for (const Counter* counter : before) {
        if (counter) stayed.insert(counter->ends.processId);
    }
    std::erase_if(m_present, [&](const auto& present) {
        if (stayed.contains(present.first)) return false;
        Close(present.second.sum);
        return true;
    });
    for (const Counter& counter : now) {
        const auto [present, isNew] = m_present.try_emplace(counter.ends.processId);
        if (isNew) present->second.number = ++m_lastNumber;
    }
}

void ProgramTraffic::Close(const ProgramSum& sum) {
    if (sum.Total() == 0) return;
    const auto [gone, isNew] = m_gone.try_emplace(sum.path, sum);
    if (!isNew) return Add(gone->second, sum);
    if (m_gone.size() <= kMostPrograms) return;
    m_gone.erase(std::ranges::min_element(m_gone, {}, [](const auto& entry) { return entry.second.Total(); }));
}

void ProgramTraffic::Count(std::span<const ConnectionEntry> connections, std::chrono::milliseconds time) {
    std::vector<Counter> counters = CountersOf(connections);
    const std::vector<const Counter*> before = Before(counters);
    const std::chrono::milliseconds elapsed = time - std::exchange(m_time, time);
    BeginProcesses(counters, before);
    for (std::size_t at = 0; at < counters.size(); ++at) {
        const Counter& now = counters[at];
        const Counter* const old = before[at];
        const auto growth = [&](std::uint64_t Counter::*bytes) -> std::uint64_t {
            if (!old) return now.*bytes;
            // Of several with the same ends nobody knows which one has gone, or started over.
            if (now.connections > 1 || old->connections > 1) {
                return now.*bytes > old->*bytes ? now.*bytes - old->*bytes : 0;
            }
            // After so long nobody knows whether a counter that is less has started over, or is another
            // connection's.
            if (elapsed > kLongestMeasure && now.*bytes < old->*bytes) return now.*bytes;
            const auto grown = CounterGrowth(static_cast<std::uint32_t>(old->*bytes),
                                             static_cast<std::uint32_t>(now.*bytes), elapsed);
            return grown ? *grown : now.*bytes;
        };
        Add(m_present[now.ends.processId].sum,
            {.path = {}, .bytesIn = growth(&Counter::bytesIn), .bytesOut = growth(&Counter::bytesOut)});
    }
    m_counters = std::move(counters);
}

std::vector<ProgramTraffic::Process> ProgramTraffic::NotNamed() const {
    std::vector<Process> processes;
    for (const auto& [id, present] : m_present) {
        if (!present.isNamed) processes.push_back({.id = id, .number = present.number});
    }
    std::ranges::sort(processes, {}, &Process::number);
    return processes;
}

void ProgramTraffic::Name(const Process& process, const std::optional<std::string>& path) {
    const auto present = m_present.find(process.id);
    if (present == m_present.end() || present->second.number != process.number) return;
    present->second.isNamed = true;
    present->second.sum.path = LowerCase(path.value_or(""));
}

std::vector<ProgramSum> ProgramTraffic::Most(std::size_t count) const {
    std::unordered_map<std::string, ProgramSum> sums = m_gone;
    for (const auto& [id, present] : m_present) {
        const auto [sum, isNew] = sums.try_emplace(present.sum.path, present.sum);
        if (!isNew) Add(sum->second, present.sum);
    }
    std::vector<ProgramSum> most;
    for (auto& [path, sum] : sums) {
        if (sum.Total() > 0) most.push_back(std::move(sum));
    }
    std::ranges::sort(most, [](const ProgramSum& left, const ProgramSum& right) {
        return left.Total() != right.Total() ? left.Total() > right.Total() : left.path < right.path;
    });
    if (most.size() > count) most.resize(count);
    return most;
}

}  // namespace brennvar
