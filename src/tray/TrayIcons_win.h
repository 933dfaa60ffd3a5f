// The six notification icons and which of them is shown. User-interface thread only.
#pragma once

#include <array>
#include <cstddef>

#include "base/Handles_win.h"
#include "tray/SystemTray_win.h"
#include "tray/TrayIconState.h"

namespace brennvar {

class TrayIcons {
public:
    // The tray is borrowed.
    explicit TrayIcons(CSystemTray& tray) : m_tray(tray) {}

    [[nodiscard]] HICON Current() { return Icon(m_shown); }
    // The tray is told only when another icon is to be shown.
    void OnTraffic(const TrafficIncrease& increase);
    void OnIdleMode(ProtectionMode mode);

private:
    void Update();
    // Loaded when it is first asked for: the window stands before the icon does.
    [[nodiscard]] HICON Icon(TrayIconState state);

    CSystemTray& m_tray;
    std::array<UniqueIcon, static_cast<std::size_t>(TrayIconState::Count)> m_icons;
    TrafficIncrease m_increase;
    ProtectionMode m_mode = ProtectionMode::Normal;
    TrayIconState m_shown = TrayIconState::IdleNormal;
};

}  // namespace brennvar
