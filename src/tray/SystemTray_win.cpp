#include "tray/SystemTray_win.h"

#include <utility>

#include "base/Bytes.h"
#include "base/Handles_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kRetryTimer = 1;
constexpr UINT kRetryPeriod = 1000;  // ms
// With the first try a minute: what a shell may take to start after the user has logged on.
constexpr int kRetries = 59;
constexpr UINT kWhole = NIF_MESSAGE | NIF_ICON | NIF_TIP;

}  // namespace

CSystemTray::CSystemTray()
    : CSystemTray([](DWORD action, NOTIFYICONDATAA& data) { return ::Shell_NotifyIconA(action, &data) != FALSE; }) {
}

CSystemTray::CSystemTray(NotifyCall notify)
    : m_notify(std::move(notify)), m_taskbarCreated(::RegisterWindowMessageA("TaskbarCreated")) {}

CSystemTray::~CSystemTray() {
    RemoveIcon();
}

bool CSystemTray::Create(const Setup& setup) {
    m_setup = setup;
    // Not a message-only window: those do not hear of a new task bar.
    if (!CWindow::Create({.text = "Brennvar Firewall Tray", .style = WS_POPUP, .className = "TrayIconClass"})) {
        return false;
    }
    m_isWanted = true;
    StartAdding();
    return true;
}

bool CSystemTray::SetIcon(HICON icon) {
    m_setup.icon = icon;
    return m_isAdded && Notify(NIM_MODIFY, NIF_ICON);
}

bool CSystemTray::RemoveIcon() {
    if (!std::exchange(m_isWanted, false)) return false;
    ::KillTimer(Window(), kRetryTimer);
    return std::exchange(m_isAdded, false) && Notify(NIM_DELETE, 0);
}

void CSystemTray::StartAdding() {
    m_isAdded = false;
    m_retriesLeft = kRetries;
    ::SetTimer(Window(), kRetryTimer, kRetryPeriod, nullptr);
    AddOrWait();
}

void CSystemTray::AddOrWait() {
    m_isAdded = Notify(NIM_ADD, kWhole);
    if (!m_isAdded && m_retriesLeft > 0) return;
    ::KillTimer(Window(), kRetryTimer);
    if (!m_isAdded && m_setup.lost) m_setup.lost();
}

void CSystemTray::OnWorkAreaChanged() {
    // The task bar may have been made anew without a word. One that still has the icon refuses a second one.
    if (m_isAdded && (Notify(NIM_ADD, kWhole) || Notify(NIM_MODIFY, kWhole))) return;
    if (!m_isAdded && m_retriesLeft > 0) return;  // it is being tried
    StartAdding();
    // The user must find the window meanwhile.
    if (!m_isAdded && m_setup.lost) m_setup.lost();
}

bool CSystemTray::Notify(DWORD action, UINT flags) const {
    NOTIFYICONDATAA data{};
    data.cbSize = sizeof(data);
    data.hWnd = m_setup.owner;
    data.uID = m_setup.iconId;
    data.uFlags = flags;
    data.uCallbackMessage = m_setup.callbackMessage;
    data.hIcon = m_setup.icon;
    PutText(data.szTip, m_setup.tooltip);
    return m_notify(action, data);
}

int CSystemTray::DefaultCommand() const {
    const UniqueMenu bar(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(m_setup.iconId)));
    const HMENU menu = bar ? ::GetSubMenu(bar.Get(), 0) : nullptr;
    const UINT command = menu ? ::GetMenuItemID(menu, 0) : 0;
    return command == static_cast<UINT>(-1) ? 0 : static_cast<int>(command);
}

void CSystemTray::OnTrayNotification(UINT iconId, UINT mouseMessage) const {
    if (iconId != m_setup.iconId || !::IsWindow(m_setup.owner)) return;
    if (mouseMessage == WM_LBUTTONUP) {
        ::SetForegroundWindow(m_setup.owner);
        if (const int command = DefaultCommand()) {
            ::PostMessageA(m_setup.owner, WM_COMMAND, static_cast<WPARAM>(command), 0);
        }
    }
    if (mouseMessage == WM_RBUTTONUP && m_setup.showMenu) {
        POINT point{};
        ::GetCursorPos(&point);
        m_setup.showMenu(point);
    }
}

std::optional<LRESULT> CSystemTray::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    if (!m_isWanted) return std::nullopt;
    // A tick may still come after the timer has gone.
    if (message == WM_TIMER && wParam == kRetryTimer && !m_isAdded && m_retriesLeft > 0) {
        --m_retriesLeft;
        AddOrWait();
    }
    if (message == m_taskbarCreated) {
        // Sent as well when the screen changes and the icon is still there; adding it twice would fail.
        (void)Notify(NIM_DELETE, 0);
        StartAdding();
    }
    if (message == WM_SETTINGCHANGE && wParam == SPI_SETWORKAREA) OnWorkAreaChanged();
    return std::nullopt;
}

}  // namespace brennvar
