// What the window is told once a second: traffic, the state of the service, the protection mode and the number of
// connections. User-interface thread only; nothing here waits.
#pragma once

#include <chrono>
#include <optional>

#include "app/SessionView.h"
#include "base/Clock.h"
#include "commands/ProtectionModes.h"
#include "ipc/Device.h"
#include "ipc/DriverTables.h"
#include "ipc/ServiceLink.h"
#include "statistics/Statistics.h"
#include "statistics/TrafficMeter.h"
#include "views/ConnectionTables.h"

namespace brennvar {

class Figures final : private ConnectionCounter {
public:
    // All are borrowed.
    Figures(const Clock& clock, DeviceOpener& devices, ConnectionTables& tables, ServiceLink& link,
            ProtectionModes& modes, Statistics& statistics);
    Figures(const Figures&) = delete;
    Figures& operator=(const Figures&) = delete;
    ~Figures() override { m_tables.CountFor(nullptr); }

    // Once a second.
    void Tick(SessionView& view);
    // The mode has changed, or the time that is left of it.
    void ShowMode(SessionView& view);

private:
    void OnCounts(const std::optional<ConnectionCounts>& counts) override;

    const Clock& m_clock;
    DeviceOpener& m_devices;
    ConnectionTables& m_tables;
    ServiceLink& m_link;
    ProtectionModes& m_modes;
    Statistics& m_statistics;
    TrafficMeter m_meter;
    std::chrono::milliseconds m_lastTotals{};  // when the meter last got some
    SessionView* m_view = nullptr;             // of the last tick
};

}  // namespace brennvar
