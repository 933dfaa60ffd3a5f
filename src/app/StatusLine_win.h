// The line at the bottom of the control center: the protection mode below the column of the page buttons, and
// beside it what the program is connected with. It is the one place that tells that the service or the driver is
// missing.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "base/Windows_win.h"
#include "config/Amounts.h"
#include "config/Language.h"
#include "controls/DrawnText_win.h"
#include "ipc/DriverTables.h"
#include "ipc/WatchedConnector.h"
#include "statistics/TrafficMeter.h"
#include "tray/ModeButton_win.h"
#include "ui/Look_win.h"

namespace brennvar {

class StatusLine {
public:
    explicit StatusLine(const Language& language) : m_language(language), m_words(language), m_mode(language) {}

    // In the ground of a window; the mode is a child of it.
    void Create(DrawnTexts& texts, const Look& look);
    // band: the line without its end below the column, in client coordinates.
    void Place(const RECT& band);
    // The mode's part of it.
    [[nodiscard]] static RECT ModePlace(const RECT& band);

    void ShowService(PeerState state);
    void ShowMode(const ModeDisplay& display, FileTime now) { m_mode.Show(display, now); }
    void OpenModeMenu() { m_mode.OpenMenu(); }
    // Nothing: the driver cannot be read.
    void ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds);
    // Connections, and in brackets how many ports are listened on besides. Nothing: not known at present.
    void ShowConnections(const std::optional<ConnectionCounts>& counts);

private:
    enum Cell { Service, Driver, Connections, In, Out, CellCount };
    void Show(Cell cell, const std::string& text);
    // Each gets what its text needs, and all the same share of what is left.
    void PlaceCells();
    [[nodiscard]] int WidthOfText(std::size_t cell) const;

    const Language& m_language;
    const AmountWords m_words;
    ModeButton m_mode;
    std::array<CDrawnText, CellCount> m_cells;
    std::array<int, CellCount> m_widths{};  // that they need
    RECT m_band{};
};

}  // namespace brennvar
