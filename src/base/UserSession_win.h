// The user's session on this machine, of which there are several when users take turns without logging off.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

class UserSession {
public:
    virtual ~UserSession() = default;
    // A screen and a keyboard belong to it now, this machine's or those of a remote desktop. True as well where the
    // system cannot tell. May take a while; any thread.
    [[nodiscard]] virtual bool IsInFront() const = 0;
    // The system is ending it.
    [[nodiscard]] virtual bool IsEnding() const = 0;
    // From now on the window gets WM_WTSSESSION_CHANGE when that has changed; anybody else can send that, too.
    // False: not now, as while the terminal services start. May take a while; any thread.
    [[nodiscard]] virtual bool TellChangesTo(HWND window) = 0;
    // For a window that is told.
    virtual void StopTelling(HWND window) = 0;
};

// By the system's terminal services, where they are; their library is loaded at the first use.
class WinUserSession final : public UserSession {
public:
    [[nodiscard]] bool IsInFront() const override;
    [[nodiscard]] bool IsEnding() const override { return ::GetSystemMetrics(SM_SHUTTINGDOWN) != 0; }
    [[nodiscard]] bool TellChangesTo(HWND window) override;
    void StopTelling(HWND window) override;
};

}  // namespace brennvar
