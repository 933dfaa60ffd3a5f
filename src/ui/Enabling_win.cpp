#include "ui/Enabling_win.h"

namespace brennvar {
namespace {

bool IsEnabled(HWND control) {
    return ::IsWindowEnabled(control) != FALSE;
}

}  // namespace

void SetEnabled(std::initializer_list<Enabling> controls, HWND next) {
    for (const auto& [control, isEnabled] : controls) {
        if (isEnabled && !IsEnabled(control)) ::EnableWindow(control, TRUE);
    }
    for (const auto& [control, isEnabled] : controls) {
        if (isEnabled || !IsEnabled(control)) continue;
        if (::GetFocus() == control) ::SetFocus(next);
        ::EnableWindow(control, FALSE);
    }
}

}  // namespace brennvar
