#include "ui/ChildControls_win.h"

// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "ui/Fonts_win.h"
#include "ui/Paint_win.h"

namespace brennvar {

std::string TextOfWindow(HWND window) {
    std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(window)), '\0');
    // The length may be an upper bound; what is copied counts.
    const int length = ::GetWindowTextA(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void SetTextIfChanged(HWND control, const std::string& text) {
    if (TextOfWindow(control) != text) ::SetWindowTextA(control, text.c_str());
}

void RemoveBorder(HWND control) {
    const auto clear = [control](int index, LONG_PTR flags) {
        ::SetWindowLongPtrA(control, index, ::GetWindowLongPtrA(control, index) & ~flags);
    };
    clear(GWL_STYLE, WS_BORDER);
    clear(GWL_EXSTYLE, WS_EX_CLIENTEDGE | WS_EX_STATICEDGE);
    ::SetWindowPos(control, nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void RequireWindowClasses(DWORD classes) {
    INITCOMMONCONTROLSEX setup{};
    setup.dwSize = sizeof(setup);
    setup.dwICC = classes;
    ::InitCommonControlsEx(&setup);
}

SIZE MeasureText(HFONT font, const std::string& text, int width, UINT moreFormat) {
    const CTextDc dc(font);
    RECT box{0, 0, width, 0};
    const UINT format = DT_CALCRECT | DT_NOPREFIX | moreFormat | (width > 0 ? DT_WORDBREAK : 0U);
    ::DrawTextA(dc.Dc(), text.c_str(), static_cast<int>(text.size()), &box, format);
    return {box.right, box.bottom};
}

}  // namespace brennvar
