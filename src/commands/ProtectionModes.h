// The protection mode from this side: asks the service for another one, reads back which one holds, and ends a
// timed one. User-interface thread only.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "base/Clock.h"
#include "commands/ModeDisplay.h"
#include "commands/ModeTimeout.h"
#include "commands/ProtectionMode.h"
#include "config/Language.h"
#include "ipc/CommandPipe.h"

namespace brennvar {

class ProtectionModes {
public:
    struct Parts {
        Clock& clock;              // tells when a timed mode is over
        const Language& language;  // both are borrowed
        // Runs the action when the user may change the mode, later or never.
        std::function<void(std::function<void()> action)> checkPassword;
        // Carries out one task of the link thread; delivered is called afterwards, when the service has had the
        // commands.
        std::function<void(std::function<void(CommandPipe&)> task, std::function<void()> delivered)> send;
        // Reads the stored mode without keeping the caller waiting, at once or after the pause that the service
        // needs for writing; done is called later.
        enum class When { Now, WhenWritten };
        std::function<void(When, std::function<void(ProtectionMode)> done)> read;
        // What Display returns has changed.
        std::function<void()> changed;
        // The mode that the notification icon shows, as read on a tick without traffic.
        std::function<void(ProtectionMode)> idleModeRead;
    };
    explicit ProtectionModes(Parts parts) : m_parts(std::move(parts)) {}
    ProtectionModes(const ProtectionModes&) = delete;
    ProtectionModes& operator=(const ProtectionModes&) = delete;

    // A command of the user, behind the security password.
    void Change(const ModeChange& change);
    // Once a second. Reads the mode; only ticks without traffic end a timed mode and reach the icon.
    void Tick(bool isIdle);
    // Calls done with the mode as it is stored from now on.
    void Read(std::function<void(ProtectionMode)> done);

    [[nodiscard]] const ModeDisplay& Display() const { return m_display; }

private:
    using Done = std::function<void(ProtectionMode)>;

    void OnAllowed(const ModeChange& change);
    // event: recorded by the service; an expiry is not.
    void SendMode(ProtectionMode mode, bool withEvent);
    void StartReading(Parts::When when);
    void OnRead(ProtectionMode mode, const std::vector<Done>& waiting);
    void Show(ProtectionMode mode);

    const Parts m_parts;
    ModeTimeout m_timeout;
    ModeDisplay m_display;
    bool m_isReading = false;
    std::optional<Parts::When> m_nextReading;  // wanted when the one that is under way is over
    std::vector<Done> m_waiting;               // for the next reading
    std::optional<FileTime> m_idleSince;       // an idle tick waits for the mode since then
};

}  // namespace brennvar
