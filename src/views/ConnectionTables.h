// The one reader of the driver's tables of connections: the status line, the statistics and the Connections page
// live on the same readings, every two seconds while the window is seen. User-interface thread only.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "ipc/Device.h"
#include "ipc/DriverTables.h"

namespace brennvar {

// Read on one thread, used on others, changed by none.
struct ConnectionReading {
    DriverTables tables;
    std::chrono::milliseconds time{};  // when it was read, by Clock::Elapsed
};

// Wants the tables, in the driver's order.
class ConnectionWatcher {
public:
    virtual ~ConnectionWatcher() = default;
    // Null: the driver cannot be read.
    virtual void OnReading(std::shared_ptr<const ConnectionReading> reading) = 0;
};

// Wants to know how many there are.
class ConnectionCounter {
public:
    virtual ~ConnectionCounter() = default;
    // Nothing: the driver cannot be read.
    virtual void OnCounts(const std::optional<ConnectionCounts>& counts) = 0;
};

class ConnectionTables {
public:
    // All are borrowed; devices and clock are used on the queue as well.
    ConnectionTables(DeviceOpener& devices, TaskQueue& reads, const Clock& clock);
    ConnectionTables(const ConnectionTables&) = delete;
    ConnectionTables& operator=(const ConnectionTables&) = delete;

    // Once a second while the window is seen.
    void Tick();
    // Asks for a reading that begins after this call; the next one follows in its time.
    void Refresh();

    // From now on, until it is forgotten, it is told of every reading. Borrowed; a watcher once, however often.
    void Watch(ConnectionWatcher& watcher);
    void Forget(ConnectionWatcher& watcher) { std::erase(m_watchers, &watcher); }
    // Null: nobody is told. Borrowed.
    void CountFor(ConnectionCounter* counter) { m_counter = counter; }

private:
    using Reading = std::shared_ptr<const ConnectionReading>;  // null: the driver cannot be read
    void OnRead(const Reading& reading);

    std::vector<ConnectionWatcher*> m_watchers;
    ConnectionCounter* m_counter = nullptr;
    unsigned m_ticks;  // since the last reading began
    Refreshed<Reading, std::monostate> m_readings;
};

}  // namespace brennvar
