#include "dialogs/ModalPlace_win.h"

namespace brennvar {

std::optional<HWND> ModalOwner(HWND window) {
    if (!window || ::IsWindowEnabled(window)) return window;
    const HWND popup = ::GetLastActivePopup(window);
    if (popup == window || !::IsWindowVisible(popup) || !::IsWindowEnabled(popup)) return std::nullopt;
    return popup;
}

}  // namespace brennvar
