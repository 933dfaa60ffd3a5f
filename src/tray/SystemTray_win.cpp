#include "tray/SystemTray_win.h"

#include <utility>

#include "base/Bytes.h"

namespace brennvar {
namespace {

constexpr char kWindowClass[] = "TrayIconClass";
constexpr char kWindowTitle[] = "Brennvar Firewall Tray";
constexpr UINT_PTR kRetryTimer = 1;
constexpr UINT kRetryPeriod = 1000;  // ms
// With the first try a minute: what a shell may take to start after the user has logged on.
constexpr int kRetries = 59;

}  // namespace

CSystemTray::CSystemTray()
    : CSystemTray([](DWORD action, NOTIFYICONDATAA& data) { return ::Shell_NotifyIconA(action, &data) != FALSE; }) {
}

CSystemTray::CSystemTray(NotifyCall notify)
    : m_notify(std::move(notify)), m_taskbarCreated(::RegisterWindowMessageA("TaskbarCreated")) {}

CSystemTray::~CSystemTray() {
    RemoveIcon();
    if (!m_window) return;
    ::SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
    ::DestroyWindow(m_window);
}

bool CSystemTray::Create(const Setup& setup) {
    m_setup = setup;
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
    if (!m_window) return false;
    m_wanted = true;
    StartAdding();
    return true;
}

void CSystemTray::RemoveIcon() {
    if (!m_wanted) return;
    m_wanted = false;
    ::KillTimer(m_window, kRetryTimer);
    m_waitingBalloon.reset();
    if (!m_shown) return;
    m_shown = false;
    Delete();
}

void CSystemTray::ShowTrayBalloon(const std::string& text, const std::string& title,
                                  std::chrono::seconds duration) {
    if (!m_wanted || text.empty()) return;
    if (!m_shown) {
        m_waitingBalloon = Balloon{.text = text, .title = title, .duration = duration};
        return;
    }
    NOTIFYICONDATAA data = NewData();
    data.uFlags = NIF_INFO;
    data.dwInfoFlags = NIIF_INFO;
    data.uTimeout = static_cast<UINT>(std::chrono::milliseconds(duration).count());
    PutText(data.szInfo, text);
    PutText(data.szInfoTitle, title);
    (void)m_notify(NIM_MODIFY, data);  // a notice that cannot be shown is lost silently
}

void CSystemTray::OnTrayNotification(UINT iconId, UINT mouseMessage) const {
    if (iconId != m_setup.iconId || mouseMessage != WM_LBUTTONUP || !::IsWindow(m_setup.owner)) return;
    ::SetForegroundWindow(m_setup.owner);
    ::PostMessageA(m_setup.owner, WM_COMMAND, static_cast<WPARAM>(m_setup.defaultCommand), 0);
}

void CSystemTray::StartAdding() {
    m_shown = false;
    m_retriesLeft = kRetries;
    ::SetTimer(m_window, kRetryTimer, kRetryPeriod, nullptr);
    AddOrWait();
}

void CSystemTray::AddOrWait() {
    m_shown = Add();
    if (m_shown || m_retriesLeft == 0) ::KillTimer(m_window, kRetryTimer);
    if (!m_shown || !m_waitingBalloon) return;
    const Balloon balloon = *std::exchange(m_waitingBalloon, std::nullopt);
    ShowTrayBalloon(balloon.text, balloon.title, balloon.duration);
}

bool CSystemTray::Add() {
    NOTIFYICONDATAA data = NewData();
    data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    data.uCallbackMessage = m_setup.callbackMessage;
    data.hIcon = m_setup.icon;
    PutText(data.szTip, m_setup.tooltip);
    return m_notify(NIM_ADD, data);
}

void CSystemTray::Delete() {
    NOTIFYICONDATAA data = NewData();
    (void)m_notify(NIM_DELETE, data);  // a task bar that is gone has no icon either
}

NOTIFYICONDATAA CSystemTray::NewData() const {
    NOTIFYICONDATAA data{};
    data.cbSize = sizeof(data);
    data.hWnd = m_setup.owner;
    data.uID = m_setup.iconId;
    return data;
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
            tray->Dispatch(message, wParam);
        } catch (...) {  // NOLINT(bugprone-empty-catch): must not cross Windows; the icon stays as it is
        }
        if (message == WM_NCDESTROY) {
            ::SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            tray->m_window = nullptr;
        }
    }
    return ::DefWindowProcA(window, message, wParam, lParam);
}

void CSystemTray::Dispatch(UINT message, WPARAM wParam) {
    if (!m_wanted) return;
    // A tick may still come after the timer has gone.
    if (message == WM_TIMER && wParam == kRetryTimer && !m_shown && m_retriesLeft > 0) {
        --m_retriesLeft;
        AddOrWait();
    }
    if (message == m_taskbarCreated) {
        // Sent as well when the screen changes and the icon is still there; adding it twice would fail.
        Delete();
        StartAdding();
    }
    // The task bar may have been made anew without a word. An icon that is still there is not added again.
    if (message == WM_SETTINGCHANGE && wParam == SPI_SETWORKAREA && m_shown) (void)Add();
}

}  // namespace brennvar
