#include "ui/Dialog_win.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "ui/Balloon_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Control_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/Paint_win.h"
#include "ui/WindowPicture_win.h"
#include "ui/WindowTree_win.h"
#include "ui/Window_win.h"

namespace brennvar {
namespace {

// What has been painted may wait until the thread has no message left, and what it does next takes long: a look for
// a message that nobody posts finds none.
void BringToScreen(HWND window) {
    constexpr UINT kNobodys = 0xBFFF;  // the last of those that programs keep for themselves
    MSG message;
    ::PeekMessageA(&message, window, kNobodys, kNobodys, PM_NOREMOVE);
}

// Shows a window with everything in it painted, and activates it. In this order: for the first active window of a
// process Windows makes ready what typing takes, which is as much as painting it.
void ShowPainted(HWND window) {
    constexpr UINT kInPlace = SWP_NOMOVE | SWP_NOSIZE;
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                   kInPlace | SWP_NOZORDER | SWP_SHOWWINDOW | SWP_NOREDRAW | SWP_NOACTIVATE);
    RECT client{};
    ::GetClientRect(window, &client);
    ShowAsOnePicture(window, client);
    BringToScreen(window);
    ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, kInPlace);
}

// How many dialogs of this thread keep each window from input. It gets its input back with the last of them.
thread_local std::map<HWND, int> s_heldOwners;

// Null: somebody else keeps it from input already, and gives it back.
HWND HoldOwner(HWND owner) {
    if (!owner) return nullptr;
    int& holders = s_heldOwners[owner];  // first: without memory nothing has happened
    if (holders == 0 && ::EnableWindow(owner, FALSE)) {
        s_heldOwners.erase(owner);
        return nullptr;
    }
    ++holders;
    return owner;
}

void ReleaseOwner(HWND owner) {
    const auto held = s_heldOwners.find(owner);
    if (held == s_heldOwners.end() || --held->second > 0) return;
    s_heldOwners.erase(held);
    ::EnableWindow(owner, TRUE);
}

// Dialogs without a loop of their own; their keyboard is handled by whichever loop runs.
thread_local std::vector<CDialog*> s_openDialogs;

// The one whose window is being made. WM_INITDIALOG is believed once, and not what it carries.
thread_local CDialog* s_object = nullptr;

// Windows looks for the mnemonic of a key in everything that can be reached, from the window that gets the key on
// until it is there again. Some versions look for ever when that one cannot be reached: its page is hidden, and
// somebody else has posted the key.
bool CanBeReached(HWND window, HWND dialog) {
    if (window == dialog) return true;
    for (HWND parent = ::GetAncestor(window, GA_PARENT); parent && parent != dialog;
         parent = ::GetAncestor(parent, GA_PARENT)) {
        if ((::GetWindowLongPtrA(parent, GWL_STYLE) & (WS_VISIBLE | WS_DISABLED)) != WS_VISIBLE) return false;
    }
    return true;
}

bool HandleKeyboard(HWND dialog, MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    return (!isKey || CanBeReached(message.hwnd, dialog)) && ::IsDialogMessageA(dialog, &message);
}

// Windows sends these. Posted, they come from somebody else, and nothing tells them from those that we cause.
bool IsNeverPosted(UINT message) {
    return message == WM_DESTROY || message == WM_NCDESTROY;
}

}  // namespace

thread_local CDialog* CDialog::s_innermost = nullptr;

CDialog::~CDialog() {
    std::erase(s_openDialogs, this);
    ReleaseOwner(std::exchange(m_heldOwner, nullptr));
    EndAccessible();
    if (!m_window) return;
    ::SetWindowLongPtrA(m_window, DWLP_USER, 0);
    NoteWindowChange();
    EndWindow(m_window);
}

CDialog* CDialog::Of(HWND window) {
    // Nothing is read of the windows of other threads and programs.
    if (!window || ::GetWindowThreadProcessId(window, nullptr) != ::GetCurrentThreadId()) return nullptr;
    if (reinterpret_cast<DLGPROC>(::GetWindowLongPtrA(window, DWLP_DLGPROC)) != &CDialog::Procedure) return nullptr;
    return reinterpret_cast<CDialog*>(::GetWindowLongPtrA(window, DWLP_USER));
}

bool CDialog::CreateModeless(HWND parent, int templateId) {
    m_initFailed = false;
    const WindowsMayEnd mayEnd;
    CDialog* const outer = std::exchange(s_object, this);
    ::CreateDialogParamA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(templateId), parent, &CDialog::Procedure, 0);
    s_object = outer;
    if (m_window && m_initFailed) EndWindow(m_window);
    return m_window != nullptr;
}

bool CDialog::ShowNow(HWND owner, int templateId, Appearance appearance) {
    m_ended = false;
    m_result = -1;
    const bool unfocused = appearance == Appearance::Unfocused;
    m_isAlert = unfocused;
    m_heldOwner = HoldOwner(owner);
    // An owned window disappears when its owner is minimised; a question must not, so it has none.
    if (!CreateModeless(unfocused ? nullptr : owner, templateId)) return false;
    if (unfocused) ::SetWindowPos(m_window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (!m_ended && unfocused) ::ShowWindow(m_window, SW_SHOWNOACTIVATE);
    // Without the keyboard it would not be read out.
    if (!m_ended && unfocused) Announce(EVENT_SYSTEM_ALERT);
    if (!m_ended && !unfocused) ShowPainted(m_window);
    if (!m_ended && !unfocused) {
        ::SetFocus(m_firstFocus ? Item(m_firstFocus) : ::GetNextDlgTabItem(m_window, nullptr, FALSE));
    }
    return true;
}

INT_PTR CDialog::DoModal(HWND owner, int templateId, Appearance appearance) {
    const bool unfocused = appearance == Appearance::Unfocused;
    const HWND focus = ::GetFocus();
    if (ShowNow(owner, templateId, appearance)) RunLoop();
    // Before the dialog goes, so that Windows does not pass the activation to another program.
    ReleaseOwner(std::exchange(m_heldOwner, nullptr));
    const bool wasActive = m_window && ::GetActiveWindow() == m_window;
    if (m_window) EndWindow(m_window);
    // A window that is hidden in the notification area would only swallow the keyboard.
    if (owner && wasActive && !unfocused && ::IsWindowVisible(owner)) ::SetActiveWindow(owner);
    if (owner && ::GetActiveWindow() == owner && focus && ::IsChild(owner, focus)) ::SetFocus(focus);
    return m_result;
}

bool CDialog::Open(HWND owner, int templateId, Appearance appearance) {
    if (m_window) EndWindow(m_window);  // of the last time: it was only hidden when it ended
    s_openDialogs.push_back(this);      // first: without memory nothing has happened
    m_isOpen = true;
    if (ShowNow(owner, templateId, appearance) && m_window) return true;
    EndOpen(-1);
    return false;
}

void CDialog::EndOpen(INT_PTR result) {
    if (!std::exchange(m_isOpen, false)) return;
    m_ended = true;
    m_result = result;
    std::erase(s_openDialogs, this);
    ReleaseOwner(std::exchange(m_heldOwner, nullptr));
    if (m_window) ::ShowWindow(m_window, SW_HIDE);
    OnEnded();
}

void CDialog::RunLoop() {
    // Back whatever a handler throws.
    struct Nesting {
        explicit Nesting(CDialog* dialog) { dialog->m_outer = std::exchange(s_innermost, dialog); }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { s_innermost = s_innermost->m_outer; }
    };
    const Nesting nesting(this);
    while (!m_ended && m_window) {
        MSG message;
        const BOOL got = ::GetMessageA(&message, nullptr, 0, 0);
        if (got == -1) return;
        if (got == 0) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (IsNeverPosted(message.message)) continue;
        try {
            if (HandleLoopMessage(message)) continue;
        } catch (...) {  // NOLINT(bugprone-empty-catch): the message counts as handled, and the dialog stands on
            continue;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

bool CDialog::HandleLoopMessage(MSG& message) {
    // It lies over whatever the key would be for.
    if (CBalloon::CloseByKey(message)) return true;
    // An outer dialog that the inner one does not disable still has its keyboard: its own loop waits for this one.
    for (CDialog* dialog = this; dialog; dialog = dialog->m_outer) {
        const HWND window = dialog->m_window;
        if (!window || (message.hwnd != window && !::IsChild(window, message.hwnd))) continue;
        if (dialog != this && !::IsWindowEnabled(window)) return false;
        return dialog->OnLoopMessage(message) || (dialog->m_window && HandleKeyboard(window, message));
    }
    const auto at = std::find_if(s_openDialogs.begin(), s_openDialogs.end(), [&](const CDialog* dialog) {
        const HWND window = dialog->m_window;
        return window && (message.hwnd == window || ::IsChild(window, message.hwnd));
    });
    if (at == s_openDialogs.end()) return false;
    CDialog* const dialog = *at;
    return dialog->OnLoopMessage(message) || (dialog->m_window && HandleKeyboard(dialog->m_window, message));
}

void CDialog::End(INT_PTR result) {
    if (m_isOpen) return EndOpen(result);
    if (m_ended) return;
    m_ended = true;
    m_result = result;
    if (!m_window) return;
    // Out of sight at once where the loop must wait for a dialog that was opened over this one. Else DoModal takes
    // it away directly, with its owner enabled: Windows would pass the activation of a hidden one to another
    // program.
    if (s_innermost != this) ::ShowWindow(m_window, SW_HIDE);
    // The loop waits for messages: this one lets it look.
    ::PostMessageA(m_window, WM_NULL, 0, 0);
}

void CDialog::TellAccessible(AccessibleThing& thing) const {
    thing.name = TextOfWindow(m_window);  // a caption has no mnemonics
    thing.role = m_isAlert ? AccessibleRole::Alert : AccessibleRole::Dialog;
    // The template's font knows nothing of the language, but a control's does.
    const HWND control = ::GetWindow(m_window, GW_CHILD);
    if (CControl::Of(control)) thing.font = reinterpret_cast<HFONT>(::SendMessageA(control, WM_GETFONT, 0, 0));
}

void CDialog::OnCommand(int, int) {}
void CDialog::OnTimer(UINT_PTR) {}
void CDialog::OnSize(int, int) {}
void CDialog::OnMinMaxInfo(MINMAXINFO&) {}
bool CDialog::OnEraseBackground(HDC) {
    return false;
}
std::optional<LRESULT> CDialog::OnMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}
bool CDialog::OnLoopMessage(const MSG&) {
    return false;
}

INT_PTR CALLBACK CDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* dialog = reinterpret_cast<CDialog*>(::GetWindowLongPtrA(window, DWLP_USER));
    const bool isBeginning = !dialog && message == WM_INITDIALOG && s_object != nullptr;
    if (isBeginning) {
        dialog = std::exchange(s_object, nullptr);
        dialog->m_window = window;
        NoteWindowChange();
        ::SetWindowLongPtrA(window, DWLP_USER, reinterpret_cast<LONG_PTR>(dialog));
    }
    if (!dialog) return FALSE;  // before WM_INITDIALOG, or the object is gone
    if (!isBeginning && !Believes(message, wParam, lParam)) return TRUE;
    NoteMessage(window, message, wParam, lParam);
    INT_PTR handled = FALSE;
    try {
        if (const std::optional<LRESULT> object = dialog->AnswerAccessible(message, wParam, lParam)) {
            ::SetWindowLongPtrA(window, DWLP_MSGRESULT, *object);
            return TRUE;
        }
        handled = dialog->Dispatch(message, wParam, lParam);
    } catch (...) {
        // An exception must not cross Windows. The message counts as not handled; a dialog that could not be
        // filled is not shown.
        if (message == WM_INITDIALOG) dialog->m_initFailed = true;
    }
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrA(window, DWLP_USER, 0);
        dialog->m_window = nullptr;
        dialog->EndAccessible();
        NoteWindowChange();
        dialog->EndOpen(-1);
    }
    return handled;
}

bool CDialog::Believes(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        // All of this is over when the object is told of its window.
        case WM_NCCREATE:
        case WM_CREATE:
        case WM_INITDIALOG: return false;
        case WM_DESTROY:
        case WM_NCDESTROY: return IsWindowEnding();
        default: return HasNeededAddress(message, wParam, lParam);
    }
}

INT_PTR CDialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto answer = [this](LRESULT result) -> INT_PTR {
        // To look takes less than to set it.
        if (::GetWindowLongPtrA(m_window, DWLP_MSGRESULT) != result) {
            ::SetWindowLongPtrA(m_window, DWLP_MSGRESULT, result);
        }
        return TRUE;
    };
    switch (message) {
        case WM_INITDIALOG:
            OnInitDialog();
            // False keeps Windows from setting the focus, which would activate a window that is not shown yet, or
            // one that must not be activated at all. DoModal does it.
            return FALSE;
        case WM_DESTROY: OnDestroy(); return TRUE;
        case WM_CLOSE: OnClose(); return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDCANCEL) {
                OnCancel();
            } else {
                OnCommand(LOWORD(wParam), HIWORD(wParam));
            }
            return TRUE;
        case WM_TIMER: OnTimer(wParam); return TRUE;
        case WM_SIZE:
            // The message may tell anything.
            if (RECT client{}; !::IsIconic(m_window) && ::GetClientRect(m_window, &client)) {
                OnSize(client.right, client.bottom);
            }
            return TRUE;
        case WM_GETMINMAXINFO: OnMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam)); return TRUE;
        case WM_DRAWITEM: (void)ReflectMessage(message, wParam, lParam); return TRUE;
        // These return their brush directly.
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX: return static_cast<INT_PTR>(ReflectMessage(message, wParam, lParam).value_or(0));
        case WM_ERASEBKGND: return OnEraseBackground(reinterpret_cast<HDC>(wParam)) ? answer(TRUE) : FALSE;
        case WM_PAINT: return PaintAsOnePicture(m_window) ? answer(0) : FALSE;
        default:
            if (const std::optional<LRESULT> result = OnMessage(message, wParam, lParam)) return answer(*result);
            return FALSE;
    }
}

}  // namespace brennvar
