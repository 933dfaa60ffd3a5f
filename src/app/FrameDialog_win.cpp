#include "app/FrameDialog_win.h"

#include <utility>

#include "app/WindowPlacement_win.h"
#include "config/ResourceIds.h"
#include "tray/TrayWindow_win.h"
#include "ui/Paint_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr SIZE kFirstSize{1000, 680};
constexpr SIZE kLeastSize{820, 560};

SIZE ScaleSize(SIZE size) {
    return {Scale(size.cx), Scale(size.cy)};
}

}  // namespace

FrameDialog::FrameDialog(const CFonts& fonts, const Language& language, UserValues& userValues)
    : m_fonts(fonts), m_language(language), m_userValues(userValues) {}

void FrameDialog::CreateFrame(const std::string& caption, std::vector<PageHost::Entry> entries) {
    m_caption = caption;
    ::SetWindowTextA(Window(), caption.c_str());
    m_drawn.SetWindow(Window());
    m_look.emplace(m_fonts);
    m_frame.emplace(*m_look);
    m_pages.Create(Window(), *m_look, std::move(entries));
    m_frame->CreateButtons(Window(), m_language);
}

void FrameDialog::RestorePlace() {
    const SIZE least = ScaleSize(kLeastSize);
    const std::optional<WindowPlacement> remembered = ReadWindowPlacement(m_userValues);
    const RECT place =
        remembered ? FitPlacement(remembered->place, least) : CenterIn(MainWorkArea(), ScaleSize(kFirstSize));
    ::SetWindowPos(Window(), nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                   SWP_NOZORDER | SWP_NOACTIVATE);
    if (remembered && remembered->isMaximised) ::ShowWindow(Window(), SW_MAXIMIZE);
}

void FrameDialog::OnDestroy() {
    WriteWindowPlacement(Window(), m_userValues);
}

void FrameDialog::RestoreWindow() {
    RestoreFromTray(Window());
}

bool FrameDialog::OnFrameCommand(int command) {
    switch (command) {
        case IDC_CAPTION_MINIMISE: OnMinimise(); return true;
        case IDC_CAPTION_MAXIMISE:
            ::ShowWindow(Window(), ::IsZoomed(Window()) ? SW_RESTORE : SW_MAXIMIZE);
            return true;
        case IDC_CAPTION_CLOSE: ::PostMessageA(Window(), WM_CLOSE, 0, 0); return true;
        case IDC_CAPTION_HELP: OnHelp(); return true;
        default: return false;
    }
}

void FrameDialog::OnSize(int width, int height) {
    if (!m_frame) return;
    const RECT client{0, 0, width, height};
    m_frame->PlaceButtons(Window());
    m_pages.Place(WindowFrame::ColumnPlace(client), WindowFrame::PagePlace(client));
    OnPlaceStatus(WindowFrame::StatusPlace(client));
    // The border was painted where it is no longer.
    m_ground = NextLook();
    ::InvalidateRect(Window(), nullptr, TRUE);
}

void FrameDialog::OnMinMaxInfo(MINMAXINFO& info) {
    const SIZE least = ScaleSize(kLeastSize);
    info.ptMinTrackSize = {least.cx, least.cy};
    // Without a caption of Windows' own a maximised window would cover the task bar.
    RECT place{};
    ::GetWindowRect(Window(), &place);
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    if (!::GetMonitorInfoA(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor)) return;
    info.ptMaxPosition = {monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top};
    info.ptMaxSize = {WidthOf(monitor.rcWork), HeightOf(monitor.rcWork)};
}

bool FrameDialog::OnEraseBackground(HDC dc) {
    if (!m_frame) return false;
    PaintGroundAtOnce(Window(), dc, [this](HDC target) {
        RECT client{};
        ::GetClientRect(Window(), &client);
        m_frame->Paint(target, client, m_caption, ::IsZoomed(Window()) != FALSE);
        m_drawn.Paint(target);
    });
    return true;
}

bool FrameDialog::TellParts(PictureParts& parts) const {
    m_drawn.TellParts(parts, m_ground);
    return true;
}

std::optional<LRESULT> FrameDialog::HitTest(POINT screenPoint) const {
    if (ResizeGrip::IsHit(Window(), screenPoint)) return HTBOTTOMRIGHT;
    RECT client{};
    ::GetClientRect(Window(), &client);
    ::ScreenToClient(Window(), &screenPoint);
    const RECT caption = WindowFrame::CaptionPlace(client);
    if (::PtInRect(&caption, screenPoint)) return HTCAPTION;
    return std::nullopt;
}

std::optional<LRESULT> FrameDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        // All of the window is client area, whatever frame its style asks for; nothing of it is painted by Windows.
        case WM_NCCALCSIZE:
        case WM_NCPAINT: return 0;
        case WM_NCACTIVATE: return TRUE;
        case WM_NCHITTEST: return HitTest({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
        case WM_SYSCOMMAND:
            // The lower four bits are Windows' own.
            if ((wParam & 0xFFF0) != SC_MINIMIZE) return std::nullopt;
            OnMinimise();
            return 0;
        case WM_WINDOWPOSCHANGED:
            m_pages.OnWindowSeen(IsSeen());
            if (!IsSeen()) CKeptBitmap::DropAll();
            return std::nullopt;  // Windows makes WM_SIZE of it
        // The same may look different from now on: colours, the smoothing of letters, the depth of the screen.
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
        case WM_THEMECHANGED:
        case WM_DISPLAYCHANGE: CKeptBitmap::DropAll(); return std::nullopt;
        case WM_ENTERSIZEMOVE: m_grip.OnEnterSizeMove(); return std::nullopt;
        case WM_EXITSIZEMOVE: m_grip.OnExitSizeMove(); return std::nullopt;
        default: return m_drawn.Answer(message, wParam, lParam);
    }
}

bool FrameDialog::OnLoopMessage(const MSG& message) {
    CPage* const page = m_pages.Current();
    const bool isOurs = message.hwnd == Window() || ::IsChild(Window(), message.hwnd);
    if (!page || !isOurs || message.message != WM_KEYDOWN) return false;
    if (message.wParam == VK_F5) {
        page->Reload();
        return true;
    }
    // AltGr is Ctrl and Alt together, and types a character.
    if (message.wParam == 'F' && ::GetKeyState(VK_CONTROL) < 0 && ::GetKeyState(VK_MENU) >= 0) {
        page->OnFind();
        return true;
    }
    return false;
}

}  // namespace brennvar
