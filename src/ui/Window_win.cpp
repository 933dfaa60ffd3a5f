#include "ui/Window_win.h"

#include <windowsx.h>

#include <utility>

#include "ui/Control_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/Paint_win.h"
#include "ui/WindowTree_win.h"

namespace brennvar {
namespace {

// The object whose window is about to be made. WM_NCCREATE is believed once, and not what it carries.
thread_local CWindow* s_object = nullptr;

}  // namespace

CWindow::~CWindow() {
    EndAccessible();
    if (!m_window) return;
    ::SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
    NoteWindowChange();
    EndWindow(m_window);
}

bool CWindow::Create(const WindowSetup& setup) {
    const HINSTANCE module = ::GetModuleHandleA(nullptr);
    WNDCLASSA windowClass{};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = &CWindow::Procedure;
    windowClass.hInstance = module;
    windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
    windowClass.lpszClassName = setup.className;
    ::RegisterClassA(&windowClass);  // fails when it is there already, which is fine
    const HMENU id =
        (setup.style & WS_CHILD) != 0 ? reinterpret_cast<HMENU>(static_cast<INT_PTR>(setup.id)) : nullptr;
    const RECT& place = setup.place;
    const WindowsMayEnd mayEnd;
    CWindow* const outer = std::exchange(s_object, this);
    ::CreateWindowExA(setup.extendedStyle, setup.className, setup.text.c_str(), setup.style, place.left, place.top,
                      WidthOf(place), HeightOf(place), setup.parent, id, module, nullptr);
    s_object = outer;
    return m_window != nullptr;
}

void CWindow::Place(const RECT& place) const {
    ::SetWindowPos(m_window, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

RECT CWindow::ClientRect() const {
    RECT client{};
    ::GetClientRect(m_window, &client);
    return client;
}

CWindow* CWindow::Of(HWND window) {
    // Nothing is read of the windows of other threads and programs.
    if (!window || ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId()) return nullptr;
    if (reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(window, GWLP_WNDPROC)) != &CWindow::Procedure) return nullptr;
    return reinterpret_cast<CWindow*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
}

LRESULT CALLBACK CWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* object = reinterpret_cast<CWindow*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!object && message == WM_NCCREATE && s_object) {
        object = std::exchange(s_object, nullptr);
        object->m_window = window;
        object->m_isBeginning = true;
        NoteWindowChange();
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    }
    std::optional<LRESULT> result;
    if (object) {
        if (!object->Believes(message, wParam, lParam)) return 0;
        NoteMessage(window, message, wParam, lParam);
        try {
            result = object->AnswerAccessible(message, wParam, lParam);
            if (!result) result = object->Dispatch(message, wParam, lParam);
        } catch (...) {
            // An exception must not cross Windows. The message counts as not handled; a window that could not be
            // filled is not made.
            if (message == WM_CREATE) result = -1;
        }
        if (message == WM_NCDESTROY) {
            ::SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            object->m_window = nullptr;
            object->EndAccessible();
            NoteWindowChange();
        }
    }
    return result ? *result : ::DefWindowProcA(window, message, wParam, lParam);
}

bool CWindow::Believes(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCREATE: return m_isBeginning;
        case WM_CREATE: return std::exchange(m_isBeginning, false);
        case WM_DESTROY:
        case WM_NCDESTROY: return IsWindowEnding();
        default: return HasNeededAddress(message, wParam, lParam);
    }
}

std::optional<LRESULT> CWindow::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> result = OnMessage(message, wParam, lParam)) return result;
    switch (message) {
        case WM_CREATE: return OnCreate() ? 0 : -1;
        case WM_DESTROY: OnDestroy(); return 0;
        // Windows would end it. A child ends with its parent, and others when their owner says so.
        case WM_CLOSE:
            if ((::GetWindowLongPtrA(m_window, GWL_STYLE) & WS_CHILD) == 0) ::ShowWindow(m_window, SW_HIDE);
            return 0;
        case WM_ERASEBKGND: return TRUE;  // WM_PAINT paints all of it
        case WM_PAINT: {
            const CBufferedPaint paint(m_window);
            OnPaint(paint.Dc(), paint.Invalid());
            return 0;
        }
        case WM_PRINTCLIENT: OnPaint(reinterpret_cast<HDC>(wParam), ClientRect()); return 0;
        case WM_SIZE: {
            const RECT client = ClientRect();  // the message may tell anything
            OnSize(client.right, client.bottom);
            return 0;
        }
        case WM_TIMER: OnTimer(wParam); return 0;
        case WM_COMMAND: OnCommand(LOWORD(wParam), HIWORD(wParam)); return 0;
        case WM_ENABLE: Repaint(); return 0;
        case WM_SETFOCUS: OnFocus(true); return 0;
        case WM_KILLFOCUS: OnFocus(false); return 0;
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_DRAWITEM: return ReflectMessage(message, wParam, lParam);
        default: return DispatchInput(message, wParam, lParam);
    }
}

std::optional<LRESULT> CWindow::DispatchInput(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const UINT keys = GET_KEYSTATE_WPARAM(wParam);
    switch (message) {
        case WM_MOUSEMOVE:
            TrackLeaving();
            OnMouseMove(point, keys);
            return 0;
        case WM_MOUSELEAVE:
            m_isTracking = false;
            OnMouseLeave();
            return 0;
        case WM_LBUTTONDOWN: OnLeftDown(point, keys); return 0;
        case WM_LBUTTONUP: OnLeftUp(point, keys); return 0;
        case WM_LBUTTONDBLCLK: OnDoubleClick(point, keys); return 0;
        case WM_CAPTURECHANGED: OnCaptureLost(); return 0;
        case WM_MOUSEWHEEL: OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), false); return 0;
        case WM_MOUSEHWHEEL: OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), true); return 0;
        case WM_KEYDOWN: return OnKeyDown(static_cast<UINT>(wParam)) ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_CHAR: return OnChar(static_cast<char>(wParam)) ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_CONTEXTMENU: OnContextMenu(point); return 0;
        default: return std::nullopt;
    }
}

void CWindow::TrackLeaving() {
    if (m_isTracking) return;
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof(track);
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = m_window;
    m_isTracking = ::TrackMouseEvent(&track) != FALSE;
}

}  // namespace brennvar
