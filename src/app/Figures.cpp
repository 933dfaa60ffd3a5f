#include "app/Figures.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "ipc/DriverTables.h"

namespace brennvar {
Figures::Figures(const Clock& clock, DeviceOpener& devices, ConnectionTables& tables, ServiceLink& link,
                 ProtectionModes& modes, Statistics& statistics)
    : m_clock(clock), m_devices(devices), m_tables(tables), m_link(link), m_modes(modes), m_statistics(statistics) {
    m_tables.CountFor(this);
}

void Figures::Tick(SessionView& view) {
    std::optional<TrafficIncrease> increase;
    std::uint64_t elapsed = 0;  // ms
    if (const std::optional<TrafficTotals> totals = ReadTrafficTotals(m_devices)) {
        increase = m_meter.Tick(*totals);
        // What flowed while the driver could not be read is not one second's burst.
        const std::chrono::milliseconds now = m_clock.Elapsed();
        elapsed = static_cast<std::uint64_t>((now - std::exchange(m_lastTotals, now)).count());
    }
    m_statistics.Tick(increase, elapsed);
    view.ShowTraffic(increase, elapsed);
    view.ShowService(m_link.Service());
    m_modes.WithdrawLate();
    const bool isIdle = increase == TrafficIncrease();
    // While traffic flows, or while the driver cannot tell, the mode is only looked at.
    if (isIdle || view.IsSeen()) m_modes.Tick(isIdle);
    ShowMode(view);
    m_view = &view;
    // Nobody sees the connections while the window is away.
    if (view.IsSeen()) m_tables.Tick();
}

void Figures::ShowMode(SessionView& view) {
    m_statistics.SetMode(m_modes.Display());
    view.ShowMode(m_modes.Display());
}

void Figures::OnCounts(const std::optional<ConnectionCounts>& counts) {
    m_statistics.SetConnections(counts);
    if (m_view) m_view->ShowConnections(counts);
}

}  // namespace brennvar
