// Reads what the Connections page shows, without keeping the window waiting: the tables from the driver, the
// process paths from the service, what programs call themselves from the disk. A service that is slow or missing
// and a disk that does not answer hold up the names only, never the list. Everything that takes long with full
// tables happens on the reading thread: what is delivered is only put in the place of what was there.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/Refreshed.h"
#include "ipc/DriverTables.h"
#include "ipc/ServiceLink.h"
#include "views/ConnectionOrder.h"
#include "views/ConnectionTables.h"
#include "views/ProcessPaths.h"
#include "views/ProgramNames.h"

namespace brennvar {

// All of this belongs to the user-interface thread.
class ConnectionsReader final : private ConnectionWatcher {
public:
    // Null: the driver cannot be read.
    using Snapshot = std::shared_ptr<const ArrangedConnections>;

    // All are borrowed and must outlive the tasks on the threads.
    struct Parts {
        ConnectionTables& tables;
        TaskQueue& reads;
        ServiceLink& link;
        TaskQueue& programQueue;  // may stand for minutes
        const ProgramFiles& programFiles;
    };

    // deliver is called with every reading and every other order of it: the newest tables that there are, with
    // names as far as they are known.
    ConnectionsReader(const Parts& parts, std::string noProcessText, std::function<void(Snapshot)> deliver);

    ConnectionsReader(const ConnectionsReader&) = delete;
    ConnectionsReader& operator=(const ConnectionsReader&) = delete;
    ~ConnectionsReader() override { m_tables.Forget(*this); }

    // The page is opened: from now on every reading of the tables is delivered, and one is asked for at once. It is
    // the first one, in which nothing is said to have come or gone.
    void Open();
    // What is read from now on is for others. The memory of full tables goes back to the system.
    void Close();
    // Asks for a reading that begins after this call, and takes it.
    void Refresh();
    // From now on the rows are wanted like this; those that were read last come at once.
    void Arrange(ConnectionWish wish);

private:
    // Read on one thread, used on others, changed by none.
    struct Known {
        std::shared_ptr<const ConnectionReading> reading;
        std::uint64_t number = 0;   // of the reading
        std::uint64_t opening = 0;  // during which it was read
        bool isFirst = false;       // none since then has been delivered
        std::shared_ptr<const ProcessPaths> paths;
        std::shared_ptr<const ProgramNames::Descriptions> descriptions;
        ConnectionWish wish;
    };
    class Builder;

    [[nodiscard]] static ProcessPaths ResolvePaths(const Known& known, ServicePipes& pipes);
    void OnReading(std::shared_ptr<const ConnectionReading> reading) override;
    [[nodiscard]] bool IsPathWorthAsking() const;
    void OnPaths(std::optional<ProcessPaths> paths);
    void OnRows(std::optional<Snapshot> snapshot, const Known& known);
    void Build();

    ConnectionTables& m_tables;
    TaskQueue& m_reads;
    ServiceLink& m_link;
    const std::function<void(Snapshot)> m_deliver;
    Known m_known;                                // without a reading: the driver could not be read
    std::uint64_t m_opening = 1;                  // how often the page was opened
    std::uint64_t m_shownOpening = 0;             // of the rows that were delivered last
    std::chrono::milliseconds m_askedForPaths{};  // when the tables were read that it was asked for
    ProgramNames m_names;
    Refreshed<ProcessPaths, Known> m_paths;
    Refreshed<Snapshot, Known> m_rows;
};

}  // namespace brennvar
