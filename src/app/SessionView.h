// What the window shows of the session, which lives beside it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "commands/ModeDisplay.h"
#include "ipc/DriverTables.h"
#include "ipc/WatchedConnector.h"
#include "statistics/TrafficMeter.h"
#include "tray/TrayNotice.h"

namespace brennvar {

// All calls come on the user-interface thread.
class SessionView {
public:
    virtual ~SessionView() = default;

    // On the screen: neither minimised nor in the notification area.
    [[nodiscard]] virtual bool IsSeen() const = 0;
    // Nothing: the driver cannot be read. milliseconds: the time that the increase took.
    virtual void ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) = 0;
    virtual void ShowService(PeerState state) = 0;
    // Nothing: not known at present.
    virtual void ShowConnections(const std::optional<ConnectionCounts>& counts) = 0;
    virtual void ShowMode(const ModeDisplay& display) = 0;
    // The mode as it was read in a second without traffic.
    virtual void ShowIdleMode(ProtectionMode mode) = 0;
    // What the service has to say. May not end before the user has read it.
    virtual void ShowNotice(const TrayNotice& notice) = 0;
    // The window, wherever it is, comes to the front.
    virtual void BringForward() = 0;
    // The program ends at once, with exit code 0, and asks nobody.
    virtual void LeaveProgram() = 0;
};

}  // namespace brennvar
