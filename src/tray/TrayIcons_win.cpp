#include "tray/TrayIcons_win.h"

#include "config/ResourceIds.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {

HICON TrayIcons::Icon(TrayIconState state) {
    // In the order of the states.
    constexpr int kIds[] = {IDI_TRAY_IDLE_NORMAL, IDI_TRAY_IDLE_ALLOW,  IDI_TRAY_IDLE_BLOCK,
                            IDI_TRAY_TRAFFIC_IN,  IDI_TRAY_TRAFFIC_OUT, IDI_TRAY_TRAFFIC_BOTH};
    static_assert(std::size(kIds) == static_cast<std::size_t>(TrayIconState::Count));
    const auto index = static_cast<std::size_t>(state);
    UniqueIcon& icon = m_icons[index];
    if (!icon) icon = LoadOwnIcon(kIds[index], ::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON));
    return icon.Get();
}

void TrayIcons::OnTraffic(const TrafficIncrease& increase) {
    m_increase = increase;
    Update();
}

void TrayIcons::OnIdleMode(ProtectionMode mode) {
    m_mode = mode;
    Update();
}

void TrayIcons::Update() {
    const TrayIconState state = ChooseTrayIcon(m_increase, m_mode);
    // One that the shell has not taken is tried again a second later.
    if (m_shown != state && m_tray.SetIcon(Icon(state))) m_shown = state;
}

}  // namespace brennvar
