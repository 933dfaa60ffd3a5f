// The line at the bottom of the control center. It is the one place that tells that the service or the driver is
// missing.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "ipc/WatchedConnector.h"
#include "tray/TrafficMeter.h"
#include "ui/Label.h"
#include "ui/Look.h"

namespace brennvar {

class StatusLine {
public:
    explicit StatusLine(const Language& language) : m_language(language) {}

    void Create(HWND parent, const Look& look);
    void Place(const RECT& band) const;

    void ShowService(PeerState state) const;
    // Nothing: the driver cannot be read.
    void ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) const;
    // Nothing: not known at present.
    void ShowConnections(std::optional<std::size_t> count) const;

private:
    enum Cell { Service, Driver, Connections, In, Out, CellCount };

    const Language& m_language;
    std::array<CLabel, CellCount> m_cells;
};

}  // namespace brennvar
