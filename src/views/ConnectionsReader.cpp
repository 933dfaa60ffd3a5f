#include "views/ConnectionsReader.h"

#include <algorithm>
#include <chrono>
#include <unordered_set>
#include <utility>

namespace brennvar {
namespace {

// How long a reading may ask the service for paths. Commands wait on the same thread; a service that answers at all
// normally answers hundreds of times in this time.
constexpr std::chrono::milliseconds kAskingTime{1000};

// The process ids of the tables, those without a path so far first, so that a slow service gets to all in time.
template <class Paths>
std::vector<std::uint32_t> ProcessIdsToAsk(const DriverTables& tables, const Paths& last) {
    std::unordered_set<std::uint32_t> seen;
    std::vector<std::uint32_t> ids;
    const auto add = [&](std::uint32_t id) {
        if (seen.insert(id).second) ids.push_back(id);
    };
    for (const ConnectionEntry& entry : tables.connections) add(entry.processId);
    for (const ListenerEntry& entry : tables.listeners) add(entry.processId);
    std::stable_partition(ids.begin(), ids.end(), [&](std::uint32_t id) { return !last.contains(id); });
    return ids;
}

}  // namespace

std::optional<std::size_t> CountConnectionRows(DeviceOpener& devices) {
    const std::optional<DriverTables> tables = ReadConnectionTable(devices);
    if (!tables) return std::nullopt;
    return tables->connections.size() + tables->listeners.size();
}

ConnectionsReader::ConnectionsReader(DeviceOpener& devices, TaskQueue& reads, ServiceLink& link,
                                     std::string noProcessText, std::function<void(Reading)> deliver)
    : m_link(link),
      m_deliver(std::move(deliver)),
      m_known{.tables = nullptr, .paths = std::make_shared<const Paths>()},
      m_tables(
          reads, [&devices](const auto&) { return ReadConnectionTable(devices); },
          [this](std::optional<DriverTables> tables, const auto&) { OnTables(std::move(tables)); }),
      m_paths(
          link.Queue(), [&link](const Known& known) { return ResolvePaths(known, link.Pipes()); },
          [this](std::optional<Paths> paths, const Known&) { OnPaths(std::move(paths)); }),
      m_rows(
          reads,
          [noProcess = std::move(noProcessText)](const Known& known) {
              const auto pathOf = [&paths = *known.paths](std::uint32_t id) {
                  const auto path = paths.find(id);
                  return path == paths.end() ? std::nullopt : path->second;
              };
              return BuildConnectionRows(*known.tables, pathOf, noProcess);
          },
          [this](Reading rows, const Known&) {
              if (rows) m_deliver(std::move(rows));
          }) {}

// Asks for each process once, until the time is over or a call has not met the service: a missing service is waited
// for once in a reading, and what was not asked keeps its last path, or none.
ConnectionsReader::Paths ConnectionsReader::ResolvePaths(const Known& known, ServicePipes& pipes) {
    const auto end = std::chrono::steady_clock::now() + kAskingTime;
    bool isAsking = true;
    Paths paths;
    for (const std::uint32_t id : ProcessIdsToAsk(*known.tables, *known.paths)) {
        if (isAsking) {
            paths.emplace(id, pipes.ResolveProcessPath(id));
            isAsking = pipes.LastCallMetService() && std::chrono::steady_clock::now() < end;
        } else if (const auto last = known.paths->find(id);
                   last != known.paths->end() && pipes.LastCallMetService()) {
            paths.insert(*last);
        }
    }
    return paths;
}

void ConnectionsReader::OnTables(std::optional<DriverTables> tables) {
    m_known.tables = tables ? std::make_shared<const DriverTables>(std::move(*tables)) : nullptr;
    if (!m_known.tables) return m_deliver(std::nullopt);
    // A call to a missing service stands on the link thread for long; the next ones would only pile up.
    if (m_paths.IsReading() || m_link.Service() == PeerState::Missing) {
        m_rows.Refresh(m_known);
    } else {
        m_paths.Refresh(m_known);
    }
}

void ConnectionsReader::OnPaths(std::optional<Paths> paths) {
    if (paths) m_known.paths = std::make_shared<const Paths>(std::move(*paths));
    if (m_known.tables) m_rows.Refresh(m_known);
}

}  // namespace brennvar
