#include "app/ControlCenterTray_win.h"

#include <utility>

#include "base/FlagWhile.h"
#include "base/LocalTime_win.h"
#include "config/ResourceIds.h"
#include "tray/TrayMenu_win.h"
#include "tray/TrayWindow_win.h"
#include "ui/Look_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

constexpr std::chrono::seconds kWelcomeDuration{20};
constexpr std::chrono::seconds kOwnNoticeDuration{10};

}  // namespace

ControlCenterTray::ControlCenterTray(const CFonts& fonts, const Language& language, const Clock& clock,
                                     std::function<void(const std::string& link)> openLink)
    : m_fonts(fonts), m_language(language), m_clock(clock), m_balloon(fonts, std::move(openLink)) {}

void ControlCenterTray::Create(HWND window, UINT callbackMessage, ProtectionModes& modes,
                               const NetworkSwitch& network) {
    m_window = window;
    m_modes = &modes;
    m_network = &network;
    // Without an icon the program runs on.
    (void)m_icon.Create(
        {.owner = window,
         .callbackMessage = callbackMessage,
         .tooltip = m_language.GetText(317, "Brennvar Personal Firewall - Your PC is in the safe hands!"),
         .icon = m_icons.Current(),
         .iconId = IDR_TRAY_MENU,
         .showMenu = [this](POINT point) { ShowMenu(point); },
         .lost = [this] { OnIconLost(); }});
}

void ControlCenterTray::ShowMenu(POINT point) {
    // The mode comes later, and the user may click again until then.
    if (m_isMenuOpen) return;
    FlagWhile opening(m_isMenuOpen);
    m_modes->Read([this, point](ProtectionMode mode) {
        const FlagWhile open(m_isMenuOpen);
        if (m_window) {
            ShowTrayMenu(m_window, point, m_language, {.mode = mode, .isNetworkOn = m_network->State()},
                         Look(m_fonts));
        }
    });
    opening.Keep();
}

void ControlCenterTray::ShowWelcome() {
    const Language& language = m_language;
    m_balloon.ShowTrayBalloon(
        m_window,
        {.text = language.GetText(318, "Welcome to Brennvar Personal Firewall. It protects you") + " " +
                 language.GetText(319, "against unauthorized incoming and outgoing network traffic.") + " " +
                 language.GetText(320, "With its intuitive interface, you have complete overview") + " " +
                 language.GetText(321, "of your network communication and security events on your PC."),
         .title = language.GetText(323, "Welcome to Brennvar Personal Firewall"),
         .icon = IDI_PROGRAM,
         .timeout = kWelcomeDuration,
         .parent = m_icon.Window()});
}

std::string ControlCenterTray::TimeNow() const {
    return FormatTimeOfDay(m_clock.UtcNow(), TimeOfDay::Minutes);
}

void ControlCenterTray::Notify(const std::string& title, const std::string& text) {
    m_balloon.ShowTrayBalloon(m_window, {.text = text,
                                         .title = title,
                                         .time = TimeNow(),
                                         .icon = IDI_PROGRAM,
                                         .timeout = kOwnNoticeDuration,
                                         .parent = m_icon.Window()});
}

void ControlCenterTray::ShowNotice(const TrayNotice& notice) {
    m_balloon.ShowTrayBalloon(m_window, {.text = notice.text,
                                         .title = m_language.GetText(41, "Brennvar Personal Firewall"),
                                         .time = TimeNow(),
                                         .link = notice.link,
                                         .icon = IDI_PROGRAM,
                                         .parent = m_icon.Window()});
}

void ControlCenterTray::TakeAway() const {
    if (m_icon.IsShown()) {
        MinimiseToTray(m_window);
    } else {
        ::ShowWindow(m_window, SW_MINIMIZE);
    }
}

void ControlCenterTray::OnIconLost() const {
    if (!::IsWindowVisible(m_window)) ::ShowWindow(m_window, SW_SHOWMINNOACTIVE);
}

void ControlCenterTray::Leave() {
    m_window = nullptr;
    (void)m_icon.RemoveIcon();
    m_balloon.Hide();
}

}  // namespace brennvar
