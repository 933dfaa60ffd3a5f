// What the window is told once a second: traffic, the state of the service, the protection mode and the number of
// connections. User-interface thread only; nothing here waits.
#pragma once

#include <chrono>
#include <cstddef>

#include "app/SessionView.h"
#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "commands/ProtectionModes.h"
#include "ipc/Device.h"
#include "ipc/DriverTables.h"
#include "ipc/ServiceLink.h"
#include "statistics/Statistics.h"
#include "statistics/TrafficMeter.h"

namespace brennvar {

class Figures {
public:
    // All are borrowed; devices is used on the queue as well.
    Figures(const Clock& clock, DeviceOpener& devices, TaskQueue& reads, ServiceLink& link, ProtectionModes& modes,
            Statistics& statistics);
    Figures(const Figures&) = delete;
    Figures& operator=(const Figures&) = delete;

    // Once a second.
    void Tick(SessionView& view);
    // The mode has changed, or the time that is left of it.
    void ShowMode(SessionView& view);

private:
    void CountConnections(SessionView& view);

    const Clock& m_clock;
    DeviceOpener& m_devices;
    ServiceLink& m_link;
    ProtectionModes& m_modes;
    Statistics& m_statistics;
    TrafficMeter m_meter;
    std::chrono::milliseconds m_lastTotals{};  // when the meter last got some
    unsigned m_seenTicks = 0;                  // while the window is seen
    SessionView* m_view = nullptr;             // of the last tick
    Refreshed<ConnectionCounts> m_connectionCount;
};

}  // namespace brennvar
