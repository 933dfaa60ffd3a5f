#include "app/Figures.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "ipc/DriverTables.h"

namespace brennvar {
namespace {

constexpr unsigned kTicksPerCount = 2;  // as often as the Connections page reads them

}  // namespace

Figures::Figures(const Clock& clock, DeviceOpener& devices, TaskQueue& reads, ServiceLink& link,
                 ProtectionModes& modes, Statistics& statistics)
    : m_clock(clock),
      m_devices(devices),
      m_link(link),
      m_modes(modes),
      m_statistics(statistics),
      m_connectionCount(
          reads, [&devices](const auto&) { return brennvar::CountConnections(devices); },
          [this](std::optional<ConnectionCounts> counts, const auto&) {
              m_statistics.SetConnections(counts);
              m_view->ShowConnections(counts);
          }) {}

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
    CountConnections(view);
}

void Figures::ShowMode(SessionView& view) {
    m_statistics.SetMode(m_modes.Display());
    view.ShowMode(m_modes.Display());
}

void Figures::CountConnections(SessionView& view) {
    // Large tables take the driver a while; nobody sees the number while the window is away.
    if (!view.IsSeen() || m_connectionCount.IsReading() || m_seenTicks++ % kTicksPerCount != 0) return;
    m_view = &view;
    m_connectionCount.Refresh();
}

}  // namespace brennvar
