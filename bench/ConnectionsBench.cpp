// One refresh of the Connections page with both of the driver's tables full, 196,608 connections and as many
// listeners, as the reading thread does it: sort the tables, make rows of them, find each row in the last table for
// its age, its rates and its mark, and put them in the order that the user wants. The yardstick is std::sort alone
// on the same entries with the same order.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "ipc/DriverTables.h"
#include "views/ConnectionOrder.h"

namespace brennvar {
namespace {

constexpr std::size_t kEntryCount = kConnectionTableSize / sizeof(ConnectionEntry);
static_assert(kEntryCount == 196'608 && kListenerTableSize / sizeof(ListenerEntry) == kEntryCount);

// A few hundred processes on one machine with a few addresses, talking to the whole net.
DriverTables MakeTables() {
    std::mt19937 engine(20260309);  // the same entries in every run
    const auto random = [&] { return static_cast<std::uint32_t>(engine()); };
    DriverTables tables;
    tables.connections.resize(kEntryCount);
    for (ConnectionEntry& entry : tables.connections) {
        entry.state = random() % 11;
        entry.localAddress = SwapAddress(0x0A000000 + random() % 4);
        entry.localPort = static_cast<std::uint16_t>(random());
        entry.remoteAddress = random();
        entry.remotePort = static_cast<std::uint16_t>(random());
        entry.processId = 4 * (random() % 300);
        entry.bytesIn = random();
        entry.bytesOut = random();
    }
    tables.listeners.resize(kEntryCount);
    for (ListenerEntry& entry : tables.listeners) {
        entry.protocol = random() % 2 == 0 ? kProtocolTcp : kProtocolUdp;
        entry.localAddress = SwapAddress(0x0A000000 + random() % 4);
        entry.localPort = static_cast<std::uint16_t>(random());
        entry.processId = 4 * (random() % 300);
    }
    return tables;
}

// Two seconds later: one row in a hundred is another one, in other places.
DriverTables MakeNext(const DriverTables& tables) {
    DriverTables next = tables;
    std::mt19937 engine(7);
    for (std::size_t row = 0; row < kEntryCount; ++row) {
        next.connections[row].bytesIn += static_cast<std::uint32_t>(engine() % 10'000);
        if (row % 100 == 0) next.connections[row].remotePort = static_cast<std::uint16_t>(engine());
        if (row % 100 == 1) next.listeners[row].localPort = static_cast<std::uint16_t>(engine());
    }
    std::shuffle(next.connections.begin(), next.connections.end(), engine);
    std::shuffle(next.listeners.begin(), next.listeners.end(), engine);
    return next;
}

void Sort(DriverTables& tables) {
    std::sort(tables.connections.begin(), tables.connections.end(), ConnectionComesBefore);
    std::sort(tables.listeners.begin(), tables.listeners.end(), ListenerComesBefore);
}

ProgramSource Programs() {
    return {.pathOf = [](std::uint32_t processId) -> std::optional<std::string> {
                return R"(C:\Program Files\Some Maker\Some Program\Program)" + std::to_string(processId) + ".exe";
            },
            .descriptionOf = [](const std::string& path) { return "Program " + path.substr(path.size() - 8); },
            .noProcess = "no process associated"};
}

void SortTables(benchmark::State& state) {
    const DriverTables next = MakeNext(MakeTables());
    for (auto _ : state) {
        state.PauseTiming();
        DriverTables tables = next;
        state.ResumeTiming();
        Sort(tables);
        benchmark::DoNotOptimize(tables.connections.data());
        benchmark::DoNotOptimize(tables.listeners.data());
    }
}
BENCHMARK(SortTables)->Unit(benchmark::kMillisecond);

void Refresh(benchmark::State& state, const ConnectionWish& wish) {
    DriverTables tables = MakeTables();
    const DriverTables next = MakeNext(tables);
    const auto connections = std::as_bytes(std::span(next.connections));
    const auto listeners = std::as_bytes(std::span(next.listeners));
    Sort(tables);
    using std::chrono::seconds;
    const ConnectionTable before(tables, seconds(10), Programs(), nullptr, true);
    for (auto _ : state) {
        tables = {.connections = DecodeConnections(connections), .listeners = DecodeListeners(listeners)};
        auto table = std::make_shared<const ConnectionTable>(tables, seconds(12), Programs(), &before, false);
        ArrangedConnections arranged = ArrangeConnections(std::move(table), wish);
        if (arranged.table->Summary().connections != kEntryCount) state.SkipWithError("rows are missing");
        benchmark::DoNotOptimize(arranged.rows.data());
        state.PauseTiming();
        arranged = {};
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(Refresh, as_read, ConnectionWish{})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Refresh, sorted,
                  ConnectionWish{.order = {.searched = {}, .column = static_cast<int>(ConnectionColumn::Received)}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Refresh, by_address,
                  ConnectionWish{.order = {.searched = {}, .column = static_cast<int>(ConnectionColumn::Address)}})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Refresh, grouped,
                  ConnectionWish{.order = {.searched = {}, .column = static_cast<int>(ConnectionColumn::RateIn)},
                                 .isGrouped = true})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Refresh, searched, ConnectionWish{.order = {.searched = ":443"}})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brennvar
