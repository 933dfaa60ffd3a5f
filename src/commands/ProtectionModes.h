// The protection mode from this side: asks the service for another one, reads back which one holds, and ends a
// timed one. User-interface thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "base/Clock.h"
#include "base/Refreshed.h"
#include "commands/Commander.h"
#include "commands/ModeDisplay.h"
#include "commands/ModeTimeout.h"
#include "commands/ProtectionMode.h"
#include "commands/Withdrawal.h"
#include "config/Language.h"

namespace brennvar {

// Who shows the mode.
class ModeView {
public:
    virtual ~ModeView() = default;
    // What ProtectionModes::Display returns has changed.
    virtual void OnModeChanged() = 0;
    // The mode that the notification icon shows, as read on a tick without traffic.
    virtual void OnIdleMode(ProtectionMode mode) = 0;
};

class ProtectionModes {
public:
    // Reads the mode that the service has stored, on the queue's thread, after this pause. Nothing counts as
    // Normal, and so does a value of none of them, which only Read's caller sees.
    using ReadMode = std::function<std::optional<ProtectionMode>(std::chrono::milliseconds pause)>;

    // The clock tells when a timed mode is over. All but the reader are borrowed.
    ProtectionModes(Clock& clock, const Language& language, Commander& commander, TaskQueue& reads, ReadMode read,
                    ModeView& view);

    // A command of the user, behind the security password. It takes the place of an earlier one that is still on
    // its way.
    void Change(const ModeChange& change);
    // Once a second. "Allow All" never holds later than the user expects: what the service has not taken by now is
    // taken back.
    void WithdrawLate();
    // Once a second. Reads the mode; only ticks without traffic end a timed mode and reach the icon.
    void Tick(bool isIdle);
    // Calls done with the mode as it is stored from now on, whatever that is.
    void Read(std::function<void(ProtectionMode)> done);

    [[nodiscard]] const ModeDisplay& Display() const { return m_display; }

private:
    using Done = std::function<void(ProtectionMode)>;
    // What a reading is told: how long it waits for the service to write, and who waits for it.
    struct Request {
        std::chrono::milliseconds pause{};
        std::vector<Done> waiting{};
    };

    void OnAllowed(const ModeChange& change);
    // The mode is read once more when the service has had the time to write it. arm: what becomes of the end of the
    // mode once the service has this one.
    void SendMode(UserCommand command, ProtectionMode mode, std::function<void(ModeTimeout&)> arm);
    void Refresh(Request request);
    void OnRead(ProtectionMode stored, const Request& request);
    void Show(ProtectionMode mode);

    Clock& m_clock;
    const Language& m_language;
    Commander& m_commander;
    ModeView& m_view;
    ModeTimeout m_timeout;                                    // as if all that was sent arrives
    ModeTimeout m_heldTimeout;                                // of what the service has taken
    std::uint64_t m_choices = 0;                              // of the user, so far
    Withdrawal m_withdrawal;                                  // of what the user has chosen last
    std::optional<std::chrono::milliseconds> m_allowedSince;  // "Allow All" is on its way, by the clock's Elapsed
    ModeDisplay m_display;
    std::optional<FileTime> m_idleSince;  // an idle tick waits for the mode since then
    Refreshed<ProtectionMode, Request> m_stored;
};

}  // namespace brennvar
