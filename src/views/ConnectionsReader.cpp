#include "views/ConnectionsReader.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/LargeVector.h"
#include "ipc/PipeRecords.h"

namespace brennvar {
namespace {

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

}  // namespace

// On the reading thread. Keeps what the next table is compared with, and a table that is only to be arranged anew.
class ConnectionsReader::Builder {
public:
    explicit Builder(std::string noProcessText) : m_noProcessText(std::move(noProcessText)) {}

    [[nodiscard]] Snapshot Build(const Known& known) {
        if (known.number != m_number) {
            m_before = std::move(m_table);
            m_number = known.number;
        }
        if (!m_table || known.paths != m_paths || known.descriptions != m_descriptions) {
            m_paths = known.paths;
            m_descriptions = known.descriptions;
            m_table = std::make_shared<const ConnectionTable>(known.reading->tables, known.reading->time, Source(),
                                                              m_before.get(), known.isFirst);
        }
        return std::make_shared<const ArrangedConnections>(ArrangeConnections(m_table, known.wish));
    }

private:
    [[nodiscard]] ProgramSource Source() const {
        return {.pathOf =
                    [this](std::uint32_t id) {
                        const auto path = m_paths->find(id);
                        return path == m_paths->end() ? std::nullopt : path->second;
                    },
                .descriptionOf =
                    [this](const std::string& path) {
                        const auto description = m_descriptions->find(path);
                        return description == m_descriptions->end() ? std::string() : description->second;
                    },
                .noProcess = m_noProcessText};
    }

    const std::string m_noProcessText;
    std::uint64_t m_number = 0;
    std::shared_ptr<const ProcessPaths> m_paths;
    std::shared_ptr<const ProgramNames::Descriptions> m_descriptions;
    std::shared_ptr<const ConnectionTable> m_before;  // of the reading before
    std::shared_ptr<const ConnectionTable> m_table;
};

ConnectionsReader::ConnectionsReader(const Parts& parts, std::string noProcessText,
                                     std::function<void(Snapshot)> deliver)
    : m_tables(parts.tables),
      m_reads(parts.reads),
      m_link(parts.link),
      m_deliver(std::move(deliver)),
      m_names(parts.programQueue, parts.programFiles, [this] { Build(); }),
      m_paths(
          parts.link.Queue(),
          [&link = parts.link](const Known& known) { return ResolvePaths(known, link.Pipes()); },
          [this](std::optional<ProcessPaths> paths, const Known&) { OnPaths(std::move(paths)); }),
      m_rows(
          parts.reads,
          [builder = std::make_shared<Builder>(std::move(noProcessText))](const Known& known) {
              return builder->Build(known);
          },
          [this](std::optional<Snapshot> snapshot, const Known& known) { OnRows(std::move(snapshot), known); }) {
    m_known.paths = std::make_shared<const ProcessPaths>();
}

void ConnectionsReader::Open() {
    ++m_opening;
    m_names.LookAgain();
    Refresh();
}

void ConnectionsReader::Close() {
    m_tables.Forget(*this);
    m_reads.Post(&LargeBlocks::GiveBackAll);
}

void ConnectionsReader::Refresh() {
    m_tables.Watch(*this);
    m_tables.Refresh();
}

void ConnectionsReader::Arrange(ConnectionWish wish) {
    m_known.wish = std::move(wish);
    Build();
}

// What was not asked keeps its last path, or none.
ProcessPaths ConnectionsReader::ResolvePaths(const Known& known, ServicePipes& pipes) {
    const std::vector<std::uint32_t> ids = ProcessIdsToAsk(known.reading->tables, *known.paths);
    ProcessPaths paths = AskForPaths(ids, pipes);
    if (paths.size() == ids.size() || !pipes.LastCallMetService()) return paths;
    for (const std::uint32_t id : ids) {
        if (const auto last = known.paths->find(id); last != known.paths->end()) paths.insert(*last);
    }
    return paths;
}

void ConnectionsReader::OnReading(std::shared_ptr<const ConnectionReading> reading) {
    m_known.reading = std::move(reading);
    if (!m_known.reading) return m_deliver(nullptr);
    ++m_known.number;
    m_known.opening = m_opening;
    m_known.isFirst = m_opening != m_shownOpening;
    if (m_paths.IsReading() || !IsPathWorthAsking()) return Build();
    m_askedForPaths = m_known.reading->time;
    m_paths.Refresh(m_known);
}

bool ConnectionsReader::IsPathWorthAsking() const {
    return IsWorthAskingForPaths(m_link.StateOf(kPidResolvePipeName), m_known.reading->time - m_askedForPaths);
}

void ConnectionsReader::OnPaths(std::optional<ProcessPaths> paths) {
    // The same paths are the same object: a table that is there already need not be made anew for them.
    if (paths && *paths != *m_known.paths) m_known.paths = std::make_shared<const ProcessPaths>(std::move(*paths));
    Build();
}

void ConnectionsReader::Build() {
    if (!m_known.reading) return;
    m_known.descriptions = m_names.Known();
    m_rows.Refresh(m_known);
}

void ConnectionsReader::OnRows(std::optional<Snapshot> snapshot, const Known& known) {
    if (!snapshot || !m_known.reading) return;
    m_shownOpening = known.opening;
    std::vector<std::string> paths;
    for (const ConnectionProgram& program : (*snapshot)->table->Programs()) paths.push_back(program.path);
    m_names.Want(paths);
    m_deliver(*std::move(snapshot));
}

}  // namespace brennvar
