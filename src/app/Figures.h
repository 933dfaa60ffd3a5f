// What the window is told once a second: traffic, the state of the service, the protection mode and the number of
// connections. User-interface thread only; nothing here waits.
#pragma once

#include <chrono>

#include "app/SessionView.h"
#include "commands/ProtectionModes.h"
#include "ipc/Device.h"
#include "ipc/ServiceLink.h"
#include "statistics/Statistics.h"
#include "statistics/TrafficMeter.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

class Figures {
public:
    // All are borrowed.
    Figures(DeviceOpener& devices, ServiceLink& link, ProtectionModes& modes, ConnectionsReader& connections,
            Statistics& statistics)
        : m_devices(devices), m_link(link), m_modes(modes), m_connections(connections), m_statistics(statistics) {}
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
    ConnectionsReader& m_connections;
    Statistics& m_statistics;
    TrafficMeter m_meter;
    std::chrono::steady_clock::time_point m_lastTotals{};  // when the meter last got some
    unsigned m_seenTicks = 0;                              // while the window is seen
    bool m_isCounting = false;
};

}  // namespace brennvar
