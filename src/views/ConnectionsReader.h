// Reads what the Connections page shows, without keeping the window waiting: the tables from the driver, the
// process paths from the service. A service that is slow or missing holds up the names only, never the list.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/TaskQueue.h"
#include "ipc/Device.h"
#include "ipc/DriverTables.h"
#include "ipc/ServiceLink.h"
#include "views/ConnectionRows.h"

namespace brennvar {

// What the service said of each process: its path, or nothing when it does not know it.
using ProcessPaths = std::unordered_map<std::uint32_t, std::optional<std::string>>;

// All of this belongs to the user-interface thread.
class ConnectionsReader {
public:
    // Nothing: the driver cannot be read.
    using Reading = std::optional<std::vector<ConnectionRow>>;
    using Done = std::function<void(Reading)>;

    // Borrowed, and must outlive the tasks on both threads. devices is used on the reading thread.
    ConnectionsReader(DeviceOpener& devices, TaskQueue& reads, ServiceLink& link, std::string noProcessText);
    ConnectionsReader(const ConnectionsReader&) = delete;
    ConnectionsReader& operator=(const ConnectionsReader&) = delete;

    // Calls done later, with paths as far as the service gives them at once, else with those it gave last. A
    // reading that is overtaken by the next one is dropped, and so is one while the driver is still being read:
    // done is not called then.
    void Read(Done done);
    // Calls done later with the number of rows that a reading would have now, or nothing; asks the driver only.
    void Count(std::function<void(std::optional<std::size_t>)> done);

private:
    struct NamedRows {
        std::vector<ConnectionRow> rows;
        ProcessPaths paths;
    };

    void AskForPaths(std::shared_ptr<const DriverTables> tables, Done done);
    void Deliver(unsigned number, const Done& done, Reading reading);
    void UseLastPaths(std::shared_ptr<const DriverTables> tables, Done done);

    DeviceOpener& m_devices;
    TaskQueue& m_reads;
    ServiceLink& m_link;
    const std::string m_noProcessText;
    std::shared_ptr<const ProcessPaths> m_lastPaths = std::make_shared<ProcessPaths>();
    unsigned m_latest = 0;     // number of the latest reading
    unsigned m_delivered = 0;  // number of the latest one that was handed over
    bool m_isReadingTables = false;
    bool m_isAsking = false;
};

}  // namespace brennvar
