// One refresh of the Connections page with the driver's table full: sorting and formatting 196,608 connections.
// The yardstick is std::sort alone on the same entries with the same order; the goal is at most three times that.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>

#include "ipc/DriverTables.h"
#include "views/ConnectionRows.h"

namespace brennvar {
namespace {

constexpr std::size_t kEntryCount = kConnectionTableSize / sizeof(ConnectionEntry);
static_assert(kEntryCount == 196'608);

// A few hundred processes on one machine with a few addresses, talking to the whole net.
std::vector<ConnectionEntry> MakeEntries() {
    std::mt19937 engine(20260309);  // the same entries in every run
    const auto random = [&] { return static_cast<std::uint32_t>(engine()); };
    std::vector<ConnectionEntry> entries(kEntryCount);
    for (ConnectionEntry& entry : entries) {
        entry.state = random() % 11;
        entry.localAddress = SwapAddress(0x0A000000 + random() % 4);
        entry.localPort = static_cast<std::uint16_t>(random());
        entry.remoteAddress = random();
        entry.remotePort = static_cast<std::uint16_t>(random());
        entry.processId = 4 * (random() % 300);
        entry.bytesIn = random();
        entry.bytesOut = random();
    }
    return entries;
}

std::optional<std::string> ResolvePath(std::uint32_t processId) {
    return R"(C:\Program Files\Some Maker\Some Program\Program)" + std::to_string(processId) + ".exe";
}

void SortAlone(benchmark::State& state) {
    const std::vector<ConnectionEntry> entries = MakeEntries();
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<ConnectionEntry> sorted = entries;
        state.ResumeTiming();
        std::sort(sorted.begin(), sorted.end(), ConnectionComesBefore);
        benchmark::DoNotOptimize(sorted.data());
    }
}
BENCHMARK(SortAlone)->Unit(benchmark::kMillisecond);

void SortAndFormat(benchmark::State& state) {
    DriverTables tables;
    const std::vector<ConnectionEntry> entries = MakeEntries();
    for (auto _ : state) {
        state.PauseTiming();
        tables.connections = entries;
        state.ResumeTiming();
        std::sort(tables.connections.begin(), tables.connections.end(), ConnectionComesBefore);
        std::vector<ConnectionRow> rows = BuildConnectionRows(tables, ResolvePath, "no process associated");
        benchmark::DoNotOptimize(rows.data());
        state.PauseTiming();
        rows = {};
        state.ResumeTiming();
    }
}
BENCHMARK(SortAndFormat)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brennvar
