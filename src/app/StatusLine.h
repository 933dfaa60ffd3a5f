// The line at the bottom of the control center. It is the one place that tells that the service or the driver is
// missing.
#pragma once

#include <cstddef>
#include <optional>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "ipc/WatchedConnector.h"
#include "tray/TrafficMeter.h"
#include "ui/Fonts.h"

namespace brennvar {

class StatusLine {
public:
    static constexpr int kHeight = 32;  // at 96 pixels per inch

    StatusLine(const CFonts& fonts, const Language& language) : m_fonts(fonts), m_language(language) {}

    void Create(HWND parent);
    void Place(const RECT& place) const;

    void ShowService(PeerState state) const;
    // Nothing: the driver cannot be read.
    void ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) const;
    // Nothing: not known at present.
    void ShowConnections(std::optional<std::size_t> count) const;

private:
    void Show(int id, const std::string& text) const;

    const CFonts& m_fonts;
    const Language& m_language;
    HWND m_parent = nullptr;
};

}  // namespace brennvar
