// What the control center shows at the notification area: its icon, its menu and its notices. User-interface thread
// only.
#pragma once

#include <functional>
#include <string>

#include "commands/ProtectionMode.h"
#include "config/Language.h"
#include "tray/SystemTray_win.h"
#include "tray/TrayBalloon_win.h"
#include "tray/TrayIcons_win.h"
#include "tray/TrayNotice.h"
#include "ui/Fonts_win.h"

namespace brennvar {

class ControlCenterTray {
public:
    struct Parts {
        const CFonts& fonts;  // both are borrowed for the life of the program
        const Language& language;
        std::function<void(const std::string& link)> openLink;  // of a notice that the user clicks
    };
    explicit ControlCenterTray(const Parts& parts);

    // readMode: reads the protection mode and calls back with it.
    using ModeReader = std::function<void(std::function<void(ProtectionMode)>)>;
    void Create(HWND window, UINT callbackMessage, ModeReader readMode);
    void OnNotification(UINT iconId, UINT mouseMessage) const { m_icon.OnTrayNotification(iconId, mouseMessage); }
    [[nodiscard]] TrayIcons& Icons() { return m_icons; }

    void ShowWelcome();
    // What the service has to say.
    void ShowNotice(const TrayNotice& notice);

    // Takes the window away: to the icon, or to the task bar when there is no icon to bring it back.
    void TakeAway() const;
    // The program ends: nothing is left at the notification area.
    void Leave();

private:
    void ShowMenu(POINT point);
    void OnIconLost() const;

    const Parts m_parts;
    HWND m_window = nullptr;
    ModeReader m_readMode;
    CSystemTray m_icon;
    TrayIcons m_icons{m_icon};
    TrayBalloon m_balloon;
    bool m_isMenuOpen = false;  // or about to
};

}  // namespace brennvar
