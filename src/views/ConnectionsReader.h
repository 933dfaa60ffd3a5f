// Reads what the Connections page shows, without keeping the window waiting: the tables from the driver, the
// process paths from the service. A service that is slow or missing holds up the names only, never the list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/Refreshed.h"
#include "ipc/Device.h"
#include "ipc/DriverTables.h"
#include "ipc/ServiceLink.h"
#include "views/ConnectionRows.h"

namespace brennvar {

// The number of rows that a reading would have now, or nothing; asks the driver only. On the thread that reads.
[[nodiscard]] std::optional<std::size_t> CountConnectionRows(DeviceOpener& devices);

// All of this belongs to the user-interface thread.
class ConnectionsReader {
public:
    // Nothing: the driver cannot be read.
    using Reading = std::optional<std::vector<ConnectionRow>>;

    // devices, reads and link are borrowed and must outlive the tasks on both threads; devices is used on the
    // reading thread. deliver is called with every reading, the newest tables that there are, with paths as far as
    // the service gives them at once, else with those it gave last.
    ConnectionsReader(DeviceOpener& devices, TaskQueue& reads, ServiceLink& link, std::string noProcessText,
                      std::function<void(Reading)> deliver);

    // Asks for a reading that begins after this call.
    void Refresh() { m_tables.Refresh(); }

private:
    // What the service said of each process: its path, or nothing when it does not know it.
    using Paths = std::unordered_map<std::uint32_t, std::optional<std::string>>;
    // Read on one thread, used on others, changed by none.
    struct Known {
        std::shared_ptr<const DriverTables> tables;
        std::shared_ptr<const Paths> paths;
    };

    [[nodiscard]] static Paths ResolvePaths(const Known& known, ServicePipes& pipes);
    void OnTables(std::optional<DriverTables> tables);
    void OnPaths(std::optional<Paths> paths);

    ServiceLink& m_link;
    const std::function<void(Reading)> m_deliver;
    Known m_known;  // without tables: the driver could not be read
    Refreshed<DriverTables> m_tables;
    Refreshed<Paths, Known> m_paths;
    Refreshed<std::vector<ConnectionRow>, Known> m_rows;
};

}  // namespace brennvar
