#include "dialogs/ModalPlace_win.h"

namespace brennvar {

std::optional<HWND> ModalOwner(HWND window) {
    if (!window || ::IsWindowEnabled(window)) return window;
    const HWND popup = ::GetLastActivePopup(window);
    if (popup == window || !::IsWindowVisible(popup) || !::IsWindowEnabled(popup)) return std::nullopt;
    return popup;
}

HWND StandingQuestion() {
    HWND question = nullptr;
    const auto look = [](HWND window, LPARAM result) -> BOOL {
        constexpr LONG_PTR kDialog = 0x8002;  // the class atom of dialogs, WC_DIALOG
        const bool isTopmost = (::GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
        if (static_cast<LONG_PTR>(::GetClassLongPtrA(window, GCW_ATOM)) != kDialog || !isTopmost) return TRUE;
        if (::GetWindow(window, GW_OWNER) || !::IsWindowVisible(window) || !::IsWindowEnabled(window)) return TRUE;
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), look, reinterpret_cast<LPARAM>(&question));
    return question;
}

}  // namespace brennvar
