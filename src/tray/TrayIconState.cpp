#include "tray/TrayIconState.h"

namespace brennvar {

TrayIconState ChooseTrayIcon(const TrafficIncrease& increase, ProtectionMode mode) {
    const bool out = increase.bytesOut > 0;
    if (increase.bytesIn > 0) return out ? TrayIconState::TrafficInAndOut : TrayIconState::TrafficIn;
    if (out) return TrayIconState::TrafficOut;
    switch (mode) {
        case ProtectionMode::AllowAll: return TrayIconState::IdleAllowAll;
        case ProtectionMode::BlockAll: return TrayIconState::IdleBlockAll;
        default: return TrayIconState::IdleNormal;
    }
}

}  // namespace brennvar
