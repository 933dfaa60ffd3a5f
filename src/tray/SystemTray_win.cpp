#include "tray/SystemTray_win.h"

#include <utility>

#include "base/Bytes.h"
#include "base/Handles_win.h"

namespace brennvar {
namespace {

constexpr char kWindowClass[] = "TrayIconClass";
constexpr char kWindowTitle[] = "Brennvar Firewall Tray";
constexpr UINT_PTR kRetryTimer = 1;
constexpr UINT kRetryPeriod = 1000;  // ms
// With the first try a minute: what a shell may take to start after the user has logged on.
constexpr int kRetries = 59;

constexpr DWORD kFirstPlatform = 4;  // that has a notification area
constexpr DWORD kShell5Platform = 5;

}  // namespace

TrayPlatform TrayPlatform::Current() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    if (!::GetVersionExA(&version)) return {};
    return {.majorVersion = version.dwMajorVersion, .isNt = version.dwPlatformId == VER_PLATFORM_WIN32_NT};
}

CSystemTray::CSystemTray()
    : CSystemTray([](DWORD action, NOTIFYICONDATAA& data) { return ::Shell_NotifyIconA(action, &data) != FALSE; }) {
}

CSystemTray::CSystemTray(NotifyCall notify, TrayPlatform platform)
    : m_notify(std::move(notify)),
      m_enabled(platform.majorVersion >= kFirstPlatform),
      m_shell5(platform.isNt && platform.majorVersion >= kShell5Platform),
      m_taskbarCreated(::RegisterWindowMessageA("TaskbarCreated")) {}

CSystemTray::~CSystemTray() {
    RemoveIcon();
    if (!m_window) return;
    ::SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
    ::DestroyWindow(m_window);
}

bool CSystemTray::MakeWindow() {
    const HINSTANCE module = ::GetModuleHandleA(nullptr);
    WNDCLASSA windowClass{};
    windowClass.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    windowClass.lpfnWndProc = &CSystemTray::Procedure;
    windowClass.hInstance = module;
    windowClass.lpszClassName = kWindowClass;
    ::RegisterClassA(&windowClass);  // fails when it is there already, which is fine
    // Not a message-only window: those do not hear of a new task bar.
    ::CreateWindowExA(0, kWindowClass, kWindowTitle, WS_POPUP, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                      CW_USEDEFAULT, nullptr, nullptr, module, this);
    return m_window != nullptr;
}

bool CSystemTray::Create(const Setup& setup) {
    if (!m_enabled) return false;
    m_setup = setup;
    if (!MakeWindow()) return false;
    m_flags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    if (m_shell5 && !setup.balloonText.empty()) m_flags |= NIF_INFO;
    m_hidden = setup.isHidden;
    if (m_hidden && m_shell5) m_flags = NIF_STATE;
    m_isWanted = true;
    // Without the hidden state an icon is hidden by not being there.
    if (!m_hidden || m_shell5) StartAdding();
    return true;
}

bool CSystemTray::SetIcon(HICON icon) {
    m_setup.icon = icon;
    if (!m_enabled || !IsShown()) return false;
    NOTIFYICONDATAA data = NewData(NIF_ICON);
    return m_notify(NIM_MODIFY, data);
}

bool CSystemTray::HideIcon() {
    if (!IsShown()) return false;
    if (m_shell5) {
        NOTIFYICONDATAA data = NewData(NIF_STATE);
        data.dwState = data.dwStateMask = NIS_HIDDEN;
        m_hidden = m_notify(NIM_MODIFY, data);
    } else {
        m_hidden = Delete();
    }
    return m_hidden;
}

bool CSystemTray::ShowIcon() {
    if (!m_isWanted || !m_hidden) return false;
    if (!m_shell5 || !m_isAdded) return AddIcon();
    // With everything: an icon that was added hidden has nothing but its state.
    m_flags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    NOTIFYICONDATAA data = NewData(m_flags | NIF_STATE);
    data.dwStateMask = NIS_HIDDEN;
    m_hidden = !m_notify(NIM_MODIFY, data);
    return !m_hidden;
}

bool CSystemTray::RemoveIcon() {
    if (!m_isWanted) return false;
    m_isWanted = false;
    ::KillTimer(m_window, kRetryTimer);
    if (!m_isAdded) return false;
    m_hidden = Delete();
    m_removed = !m_hidden;
    return m_hidden;
}

bool CSystemTray::AddIcon() {
    if (!m_window) return false;
    m_isWanted = true;
    m_hidden = m_removed = false;
    StartAdding();
    return m_isAdded;
}

void CSystemTray::StartAdding() {
    m_isAdded = false;
    m_retriesLeft = kRetries;
    ::SetTimer(m_window, kRetryTimer, kRetryPeriod, nullptr);
    AddOrWait();
}

void CSystemTray::AddOrWait() {
    NOTIFYICONDATAA data = NewData(m_flags);
    m_isAdded = m_notify(NIM_ADD, data);
    if (m_isAdded) {
        m_removed = false;
        m_hidden = (m_flags & NIF_STATE) != 0;
        // The balloon is shown once, not with every new task bar.
        m_flags &= ~static_cast<UINT>(NIF_INFO);
        m_setup.balloonText.clear();
    }
    if (!m_isAdded && m_retriesLeft > 0) return;
    ::KillTimer(m_window, kRetryTimer);
    if (m_isAdded) return;
    m_removed = m_hidden = true;
    if (m_setup.lost) m_setup.lost();
}

bool CSystemTray::Delete() {
    NOTIFYICONDATAA data = NewData(0);
    const bool isDeleted = m_notify(NIM_DELETE, data);
    if (isDeleted) m_isAdded = false;
    return isDeleted;
}

void CSystemTray::OnWorkAreaChanged() {
    if (!IsShown()) return;
    // The task bar may have been made anew without a word. One that still has the icon refuses a second one.
    NOTIFYICONDATAA data = NewData(m_flags);
    m_isAdded = m_notify(NIM_ADD, data) || m_notify(NIM_MODIFY, data);
    m_removed = !m_isAdded;
    if (m_removed && m_setup.lost) m_setup.lost();
}

NOTIFYICONDATAA CSystemTray::NewData(UINT flags) const {
    NOTIFYICONDATAA data{};
    data.cbSize = sizeof(data);
    data.hWnd = Target();
    data.uID = m_setup.iconId;
    data.uFlags = flags;
    data.uCallbackMessage = m_setup.callbackMessage;
    data.hIcon = m_setup.icon;
    PutText(data.szTip, m_setup.tooltip);
    if ((flags & NIF_INFO) != 0) {
        PutText(data.szInfo, m_setup.balloonText);
        PutText(data.szInfoTitle, m_setup.balloonTitle);
        data.uTimeout = static_cast<UINT>(std::chrono::milliseconds(m_setup.balloonTime).count());
        data.dwInfoFlags = m_setup.balloonFlags;
    }
    if (flags == NIF_STATE) data.dwState = data.dwStateMask = NIS_HIDDEN;
    return data;
}

void CSystemTray::SetMenuDefaultItem(UINT item, bool byPosition) {
    if (item == m_defaultItem && byPosition == m_defaultByPosition) return;
    m_defaultItem = item;
    m_defaultByPosition = byPosition;
}

int CSystemTray::DefaultCommand() const {
    if (!m_defaultByPosition) return static_cast<int>(m_defaultItem);
    const UniqueMenu bar(::LoadMenuA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(m_setup.iconId)));
    const HMENU menu = bar ? ::GetSubMenu(bar.Get(), 0) : nullptr;
    const UINT command = menu ? ::GetMenuItemID(menu, static_cast<int>(m_defaultItem)) : 0;
    return command == static_cast<UINT>(-1) ? 0 : static_cast<int>(command);
}

void CSystemTray::OnTrayNotification(UINT iconId, UINT mouseMessage) const {
    const HWND target = Target();
    if (!m_enabled || iconId != m_setup.iconId || !::IsWindow(target)) return;
    if (mouseMessage == WM_LBUTTONUP) {
        ::SetForegroundWindow(target);
        if (const int command = DefaultCommand()) {
            ::PostMessageA(target, WM_COMMAND, static_cast<WPARAM>(command), 0);
        }
    }
    if (mouseMessage == WM_RBUTTONUP && m_setup.showMenu) {
        POINT point{};
        ::GetCursorPos(&point);
        m_setup.showMenu(point);
    }
}

LRESULT CALLBACK CSystemTray::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* tray = static_cast<CSystemTray*>(reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpCreateParams);
        tray->m_window = window;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(tray));
    }
    auto* tray = reinterpret_cast<CSystemTray*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (tray) {
        try {
            tray->Dispatch(message, wParam, lParam);
        } catch (...) {  // NOLINT(bugprone-empty-catch): must not cross Windows; the icon stays as it is
        }
        if (message == WM_NCDESTROY) {
            ::SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            tray->m_window = nullptr;
        }
    }
    return ::DefWindowProcA(window, message, wParam, lParam);
}

void CSystemTray::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_isWanted) return;
    if (message == m_setup.callbackMessage && !m_setup.owner && message != 0) {
        OnTrayNotification(static_cast<UINT>(wParam), static_cast<UINT>(lParam));
    }
    // A tick may still come after the timer has gone.
    if (message == WM_TIMER && wParam == kRetryTimer && !m_isAdded && m_retriesLeft > 0) {
        --m_retriesLeft;
        AddOrWait();
    }
    // An icon that was hidden on purpose stays away; one that no task bar wanted has a new chance.
    if (message == m_taskbarCreated && (!m_hidden || m_removed)) {
        // Sent as well when the screen changes and the icon is still there; adding it twice would fail.
        (void)Delete();
        StartAdding();
    }
    if (message == WM_SETTINGCHANGE && wParam == SPI_SETWORKAREA) OnWorkAreaChanged();
}

}  // namespace brennvar
