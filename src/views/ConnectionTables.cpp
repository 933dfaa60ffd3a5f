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
          [&devices, &clock](std::monostate) -> std::optional<Reading> {
              auto tables = ReadConnectionTable(devices);
              if (!tables) return std::nullopt;
              return std::make_shared<const ConnectionReading>(
                  ConnectionReading{.tables = *std::move(tables), .time = clock.Elapsed()});
          },
          [this](const std::optional<Reading>& reading, std::monostate) { OnRead(reading.value_or(nullptr)); }) {}

void ConnectionTables::Tick() {
    // Large tables take the driver a while.
    if (++m_ticks >= kTicksPerReading && !m_readings.IsReading()) Refresh();
}

void ConnectionTables::Refresh() {
    m_ticks = 0;
    m_readings.Refresh({});
}

void ConnectionTables::Watch(ConnectionWatcher& watcher) {
    if (std::ranges::find(m_watchers, &watcher) == m_watchers.end()) m_watchers.push_back(&watcher);
}

void ConnectionTables::OnRead(const Reading& reading) {
    if (m_counter) {
        m_counter->OnCounts(reading
                                ? std::optional(ConnectionCounts{.connections = reading->tables.connections.size(),
                                                                 .listeners = reading->tables.listeners.size()})
                                : std::nullopt);
    }
    // Who is told may go by that, or make another one come.
    for (ConnectionWatcher* const watcher : std::vector(m_watchers)) {
        if (std::ranges::find(m_watchers, watcher) != m_watchers.end()) watcher->OnReading(reading);
    }
}

}  // namespace brennvar
