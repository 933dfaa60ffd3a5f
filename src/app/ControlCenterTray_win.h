// What the control center shows at the notification area: its icon, its menu and its notices. User-interface thread
// only.
#pragma once

#include <functional>
#include <string>

#include "base/Clock.h"
#include "commands/NetworkSwitch.h"
#include "commands/ProtectionModes.h"
#include "config/Language.h"
#include "tray/SystemTray_win.h"
#include "tray/TrayBalloon_win.h"
#include "tray/TrayIcons_win.h"
#include "tray/TrayNotice.h"
#include "ui/Fonts_win.h"

namespace brennvar {

class ControlCenterTray {
public:
    // All but the function are borrowed for the life of the program. openLink: of a notice that the user clicks.
    ControlCenterTray(const CFonts& fonts, const Language& language, const Clock& clock,
                      std::function<void(const std::string& link)> openLink);

    // The modes and the network, which are borrowed, tell the menu how they are.
    void Create(HWND window, UINT callbackMessage, ProtectionModes& modes, const NetworkSwitch& network);
    void OnNotification(UINT iconId, UINT mouseMessage) const { m_icon.OnTrayNotification(iconId, mouseMessage); }
    [[nodiscard]] TrayIcons& Icons() { return m_icons; }

    void ShowWelcome();
    // What the program itself has to say.
    void Notify(const std::string& title, const std::string& text);
    // What the service has to say.
    void ShowNotice(const TrayNotice& notice);

    // Takes the window away: to the icon, or to the task bar when there is no icon to bring it back.
    void TakeAway() const;
    // The program ends: nothing is left at the notification area.
    void Leave();

private:
    void ShowMenu(POINT point);
    [[nodiscard]] std::string TimeNow() const;
    void OnIconLost() const;

    const CFonts& m_fonts;
    const Language& m_language;
    const Clock& m_clock;
    HWND m_window = nullptr;
    ProtectionModes* m_modes = nullptr;  // from Create on
    const NetworkSwitch* m_network = nullptr;
    CSystemTray m_icon;
    TrayIcons m_icons{m_icon};
    TrayBalloon m_balloon;
    bool m_isMenuOpen = false;  // or about to
};

}  // namespace brennvar
