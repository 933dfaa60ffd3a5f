#include "views/ConnectionTables.h"

#include <algorithm>
#include <utility>

namespace brennvar {
namespace {

constexpr unsigned kTicksPerReading = 2;

}  // namespace

ConnectionTables::ConnectionTables(DeviceOpener& devices, TaskQueue& reads, const Clock& clock)
    : m_ticks(kTicksPerReading),
      m_readings(
          reads,
          [&devices, &clock](const Request& request) -> std::optional<Result> {
              if (!request.wantsTables) {
                  const auto counts = CountConnections(devices);
                  return counts ? std::optional(Result{.counts = *counts, .reading = {}}) : std::nullopt;
              }
              auto tables = ReadConnectionTable(devices);
              if (!tables) return std::nullopt;
              const ConnectionCounts counts{.connections = tables->connections.size(),
                                            .listeners = tables->listeners.size()};
              return Result{.counts = counts,
                            .reading = std::make_shared<const ConnectionReading>(
                                ConnectionReading{.tables = *std::move(tables), .time = clock.Elapsed()})};
          },
          [this](const std::optional<Result>& result, const Request& request) { OnRead(result, request); }) {}

void ConnectionTables::Tick() {
    // Large tables take the driver a while.
    if (++m_ticks >= kTicksPerReading && !m_readings.IsReading()) Refresh();
}

void ConnectionTables::Refresh() {
    m_ticks = 0;
    m_readings.Refresh({.wantsTables = !m_watchers.empty()});
}

void ConnectionTables::Watch(ConnectionWatcher& watcher) {
    if (std::ranges::find(m_watchers, &watcher) == m_watchers.end()) m_watchers.push_back(&watcher);
}

void ConnectionTables::OnRead(const std::optional<Result>& result, const Request& request) {
    if (m_counter) m_counter->OnCounts(result ? std::optional(result->counts) : std::nullopt);
    if (!request.wantsTables) return;
    // Who is told may go by that, or make another one come.
    for (ConnectionWatcher* const watcher : std::vector(m_watchers)) {
        if (std::ranges::find(m_watchers, watcher) != m_watchers.end()) {
            watcher->OnReading(result ? result->reading : nullptr);
        }
    }
}

}  // namespace brennvar
