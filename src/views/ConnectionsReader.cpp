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
std::vector<std::uint32_t> ProcessIdsToAsk(const DriverTables& tables, const ProcessPaths& last) {
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

// Asks for each process once, until the time is over or a call has not met the service: a missing service is waited
// for once in a reading, and what was not asked keeps its last path, or none.
ProcessPaths ResolvePaths(const DriverTables& tables, const ProcessPaths& last, ServicePipes& pipes) {
    const auto end = std::chrono::steady_clock::now() + kAskingTime;
    bool isAsking = true;
    ProcessPaths paths;
    for (const std::uint32_t id : ProcessIdsToAsk(tables, last)) {
        if (isAsking) {
            paths.emplace(id, pipes.ResolveProcessPath(id));
            isAsking = pipes.LastCallMetService() && std::chrono::steady_clock::now() < end;
        } else if (const auto known = last.find(id); known != last.end() && pipes.LastCallMetService()) {
            paths.insert(*known);
        }
    }
    return paths;
}

PathResolver LookUpIn(const ProcessPaths& paths) {
    return [&paths](std::uint32_t id) {
        const auto known = paths.find(id);
        return known == paths.end() ? std::nullopt : known->second;
    };
}

}  // namespace

ConnectionsReader::ConnectionsReader(DeviceOpener& devices, TaskQueue& reads, ServiceLink& link,
                                     std::string noProcessText)
    : m_devices(devices), m_reads(reads), m_link(link), m_noProcessText(std::move(noProcessText)) {}

void ConnectionsReader::Read(Done done) {
    if (m_isReadingTables) return;
    m_isReadingTables = true;
    ++m_latest;
    m_reads.Ask<std::optional<DriverTables>>(
        [this] { return ReadConnectionTable(m_devices); },
        [this, done = std::move(done)](std::optional<std::optional<DriverTables>> answer) {
            m_isReadingTables = false;
            if (!answer || !*answer) return Deliver(m_latest, done, std::nullopt);
            auto tables = std::make_shared<const DriverTables>(std::move(**answer));
            // A call to a missing service stands on the link thread for long; the next ones would only pile up.
            if (m_isAsking || m_link.Service() == PeerState::Missing) return UseLastPaths(std::move(tables), done);
            AskForPaths(std::move(tables), done);
        });
}

void ConnectionsReader::Count(std::function<void(std::optional<std::size_t>)> done) {
    using Rows = std::optional<std::size_t>;
    m_reads.Ask<Rows>(
        [this]() -> Rows {
            const std::optional<DriverTables> tables = ReadConnectionTable(m_devices);
            if (!tables) return std::nullopt;
            return tables->connections.size() + tables->listeners.size();
        },
        [done = std::move(done)](std::optional<Rows> rows) { done(rows.value_or(std::nullopt)); });
}

void ConnectionsReader::AskForPaths(std::shared_ptr<const DriverTables> tables, Done done) {
    m_isAsking = true;
    m_link.Ask<NamedRows>(
        [tables = std::move(tables), last = m_lastPaths, noProcess = m_noProcessText](ServicePipes& pipes) {
            NamedRows named;
            named.paths = ResolvePaths(*tables, *last, pipes);
            named.rows = BuildConnectionRows(*tables, LookUpIn(named.paths), noProcess);
            return named;
        },
        [this, number = m_latest, done = std::move(done)](std::optional<NamedRows> named) {
            m_isAsking = false;
            if (!named) return;
            m_lastPaths = std::make_shared<const ProcessPaths>(std::move(named->paths));
            Deliver(number, done, std::move(named->rows));
        });
}

void ConnectionsReader::Deliver(unsigned number, const Done& done, Reading reading) {
    if (number <= m_delivered) return;
    m_delivered = number;
    done(std::move(reading));
}

void ConnectionsReader::UseLastPaths(std::shared_ptr<const DriverTables> tables, Done done) {
    m_reads.Ask<std::vector<ConnectionRow>>(
        [tables = std::move(tables), paths = m_lastPaths, noProcess = m_noProcessText] {
            return BuildConnectionRows(*tables, LookUpIn(*paths), noProcess);
        },
        [this, number = m_latest, done = std::move(done)](std::optional<std::vector<ConnectionRow>> rows) {
            if (rows) Deliver(number, done, std::move(*rows));
        });
}

}  // namespace brennvar
