// What the window is told once a second: traffic, the state of the service, the protection mode and the number of
// connections. User-interface thread only; nothing here waits.
#pragma once

#include <chrono>
#include <cstddef>

#include "app/SessionView.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "commands/ProtectionModes.h"
#include "ipc/Device.h"
#include "ipc/ServiceLink.h"
#include "statistics/Statistics.h"
#include "statistics/TrafficMeter.h"

namespace brennvar {

class Figures {
public:
    // All are borrowed; devices is used on the queue as well.
    Figures(DeviceOpener& devices, TaskQueue& reads, ServiceLink& link, ProtectionModes& modes,
            Statistics& statistics);
    Figures(const Figures&) = delete;
    Figures& operator=(const Figures&) = delete;

    // Once a second; now: of a clock that nobody sets.
    void Tick(SessionView& view, std::chrono::steady_clock::time_point now);
    // The mode has changed, or the time that is left of it.
    void ShowMode(SessionView& view);

private:
    void CountConnections(SessionView& view);

    DeviceOpener& m_devices;
    ServiceLink& m_link;
    ProtectionModes& m_modes;
    Statistics& m_statistics;
    TrafficMeter m_meter;
    std::chrono::steady_clock::time_point m_lastTotals{};  // when the meter last got some
    unsigned m_seenTicks = 0;                              // while the window is seen
    SessionView* m_view = nullptr;                         // of the last tick
    Refreshed<std::size_t> m_connectionCount;
};

}  // namespace brennvar
