#include "ui/Control_win.h"

#include "ui/ChildControls_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/Paint_win.h"
#include "ui/WindowTree_win.h"

namespace brennvar {
namespace {

// Messages on which some of Windows' classes paint at once and not when they are asked to. Those that may call the
// parent's handlers are not among them: such a handler may open a dialog, and the control must not stay dark
// meanwhile.
bool PaintsAtOnce(UINT message) {
    switch (message) {
        case WM_ENABLE:
        case WM_SETTEXT:
        case WM_KILLFOCUS:
        case WM_UPDATEUISTATE:
        case BM_SETSTATE:
        case BM_SETCHECK:
        case BM_SETSTYLE:
        case CB_SETCURSEL: return true;
        default: return false;
    }
}

}  // namespace

std::optional<LRESULT> ReflectMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    HWND control = nullptr;
    switch (message) {
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX: control = reinterpret_cast<HWND>(lParam); break;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            if (!IsDrawable(item)) return std::nullopt;
            control = item.hwndItem;
            break;
        }
        default: return std::nullopt;
    }
    CControl* const object = CControl::Of(control);
    return object ? object->OnReflected(message, wParam, lParam) : std::nullopt;
}

CControl* CControl::Of(HWND window) {
    // Nothing is read of the windows of other threads and programs.
    if (!window || ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId()) return nullptr;
    const auto get = ::IsWindowUnicode(window) ? ::GetWindowLongPtrW : ::GetWindowLongPtrA;
    if (reinterpret_cast<WNDPROC>(get(window, GWLP_WNDPROC)) != &CControl::Procedure) return nullptr;
    return reinterpret_cast<CControl*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
}

CControl::~CControl() {
    EndAccessible();
    if (!m_window) return;
    SetProcedure(m_window, m_windowsOwn.procedure, m_windowsOwn.isWide);
    ::SetWindowLongPtrA(m_window, GWLP_USERDATA, 0);
}

LRESULT CControl::WindowsOwn::Call(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    return (isWide ? ::CallWindowProcW : ::CallWindowProcA)(procedure, window, message, wParam, lParam);
}

// The call that sets a window's procedure decides whether the window takes texts in Unicode.
WNDPROC CControl::SetProcedure(HWND window, WNDPROC procedure, bool isWide) {
    const auto set = isWide ? ::SetWindowLongPtrW : ::SetWindowLongPtrA;
    return reinterpret_cast<WNDPROC>(set(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

void CControl::Attach(HWND control, HFONT font) {
    Subclass(control, font, false);
}

void CControl::Subclass(HWND control, HFONT font, bool isWide) {
    if (!control) return;
    m_window = control;
    NoteWindowChange();
    // Not with the helpers of the common controls, which look the object up in the window's properties for each
    // message: the object stands in the room that the control's class leaves to its user.
    ::SetWindowLongPtrA(control, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_windowsOwn = {SetProcedure(control, &CControl::Procedure, isWide), isWide};
    SetControlFont(control, font);
}

void CControl::Make(HWND parent, const char* className, const std::string& text, DWORD style, int id, HFONT font,
                    DWORD extendedStyle, SIZE size) {
    Attach(::CreateWindowExA(extendedStyle, className, text.c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, size.cx,
                             size.cy, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                             ::GetModuleHandleA(nullptr), nullptr),
           font);
}

void CControl::MakeWide(HWND parent, const wchar_t* className, DWORD style, int id, HFONT font) {
    Subclass(
        ::CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleA(nullptr), nullptr),
        font, true);
}

std::string CControl::Text() const {
    return TextOfWindow(m_window);
}

void CControl::SetText(const std::string& text) const {
    SetTextIfChanged(m_window, text);
}

void CControl::Place(const RECT& place) const {
    ::SetWindowPos(m_window, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

RECT CControl::ClientRect() const {
    RECT client{};
    ::GetClientRect(m_window, &client);
    return client;
}

void CControl::TellButton(AccessibleThing& thing) const {
    thing.SetCaption(Text());
    thing.role = AccessibleRole::Button;
    thing.action = AccessibleAction::Press;
    thing.Set(STATE_SYSTEM_PRESSED, (::SendMessageA(m_window, BM_GETSTATE, 0, 0) & BST_PUSHED) != 0);
}

HFONT CControl::Font() const {
    return reinterpret_cast<HFONT>(::SendMessageA(m_window, WM_GETFONT, 0, 0));
}

bool CControl::ShowsFocus() const {
    return HasFocus() && (::SendMessageA(m_window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEFOCUS) == 0;
}

UINT CControl::PrefixFormat() const {
    return (::SendMessageA(m_window, WM_QUERYUISTATE, 0, 0) & UISF_HIDEACCEL) != 0 ? DT_HIDEPREFIX : 0U;
}

LRESULT CControl::CallWindows(UINT message, WPARAM wParam, LPARAM lParam) const {
    return m_windowsOwn.Call(m_window, message, wParam, lParam);
}

LRESULT CControl::CallSilently(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = m_window;
    const WindowsOwn windowsOwn = m_windowsOwn;
    // Turning the painting on again would show a control that is hidden; one that nobody sees paints nothing.
    const bool isVisible = ::IsWindowVisible(window) != FALSE;
    if (isVisible) windowsOwn.Call(window, WM_SETREDRAW, FALSE, 0);
    const LRESULT result = windowsOwn.Call(window, message, wParam, lParam);
    if (!isVisible || !::IsWindow(window)) return result;
    windowsOwn.Call(window, WM_SETREDRAW, TRUE, 0);
    // A window that does not show has nothing left to be painted, and neither have the windows in it.
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return result;
}

LRESULT CALLBACK CControl::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* control = reinterpret_cast<CControl*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!control) return ::DefWindowProcA(window, message, wParam, lParam);
    if (const std::optional<LRESULT> told = control->AnswerAccessible(message, wParam, lParam)) return *told;
    if (!control->Believes(message, wParam, lParam)) return 0;
    NoteMessage(window, message, wParam, lParam);
    // The object may end while it handles the message.
    const WindowsOwn windowsOwn = control->m_windowsOwn;
    if (message == WM_NCDESTROY) {
        control->m_window = nullptr;
        control->EndAccessible();
        NoteWindowChange();
        ::SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        SetProcedure(window, windowsOwn.procedure, windowsOwn.isWide);
        return windowsOwn.Call(window, message, wParam, lParam);
    }
    std::optional<LRESULT> result;
    try {
        result = control->Dispatch(message, wParam, lParam);
    } catch (...) {  // NOLINT(bugprone-empty-catch): must not cross Windows, which handles the message then
    }
    return result ? *result : windowsOwn.Call(window, message, wParam, lParam);
}

bool CControl::Believes(UINT message, WPARAM wParam, LPARAM lParam) const {
    // From here on to the messages that have names, Windows lets every address through: we call the control itself.
    constexpr UINT kFirstNamedMessage = 0xC000;
    if (message >= WM_USER && message < kFirstNamedMessage) return IsHarmless(message);
    switch (message) {
        // A control is there already when it is given to us, and ends with its parent.
        case WM_NCCREATE:
        case WM_CREATE:
        case WM_CLOSE:
        // Memory and functions of this process, which the control would use; the first is asked for with an
        // address that some versions of Windows let through as it is.
        case CB_GETCOMBOBOXINFO:
        case EM_SETHANDLE:
        case EM_SETWORDBREAKPROC: return false;
        case WM_DESTROY:
        case WM_NCDESTROY: return IsWindowEnding();
        case WM_SETTEXT:
        case WM_SETFONT: return !m_keepsText;
        default: return HasNeededAddress(message, wParam, lParam);
    }
}

std::optional<LRESULT> CControl::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SETFOCUS) {
        ::PostMessageA(::GetParent(m_window), kControlFocused, 0, reinterpret_cast<LPARAM>(m_window));
    }
    // The control may end while it handles a message; nothing of the object is touched after that.
    if (const std::optional<LRESULT> result = OnMessage(message, wParam, lParam)) return result;
    if (message == WM_MOUSEMOVE) SetHot(true);
    if (message == WM_MOUSELEAVE) SetHot(false);
    if (!PaintsAll()) return std::nullopt;
    switch (message) {
        case WM_ERASEBKGND: return TRUE;
        case WM_PAINT: PaintBuffered(); return 0;
        case WM_PRINTCLIENT:
            if ((lParam & PRF_ERASEBKGND) != 0) PaintParentGround(m_window, reinterpret_cast<HDC>(wParam));
            OnPaint(reinterpret_cast<HDC>(wParam), ClientRect());
            return 0;
        case WM_SETFOCUS: Repaint(); return std::nullopt;
        default: break;
    }
    if (PaintsAtOnce(message)) return CallSilently(message, wParam, lParam);
    return std::nullopt;
}

void CControl::PaintBuffered() {
    const CBufferedPaint paint(m_window);
    PaintParentGround(m_window, paint.Dc());
    OnPaint(paint.Dc(), ClientRect());
}

void CControl::SetHot(bool hot) {
    if (hot == m_isHot) return;
    m_isHot = hot;
    if (hot) {
        TRACKMOUSEEVENT track{};
        track.cbSize = sizeof(track);
        track.dwFlags = TME_LEAVE;
        track.hwndTrack = m_window;
        ::TrackMouseEvent(&track);
    }
    Repaint();
}

}  // namespace brennvar
