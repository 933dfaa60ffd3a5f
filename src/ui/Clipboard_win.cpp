#include "ui/Clipboard_win.h"

#include <cstring>

#include "ui/WideText_win.h"

namespace brennvar {

void CopyToClipboard(HWND owner, const std::string& text, HFONT font) {
    const std::wstring wide = Widen(text, font);
    if (!::OpenClipboard(owner)) return;
    ::EmptyClipboard();
    const std::size_t size = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
    if (void* bytes = memory ? ::GlobalLock(memory) : nullptr) {
        std::memcpy(bytes, wide.c_str(), size);
        ::GlobalUnlock(memory);
        // The clipboard owns the memory when it has taken it.
        if (!::SetClipboardData(CF_UNICODETEXT, memory)) ::GlobalFree(memory);
    } else if (memory) {
        ::GlobalFree(memory);
    }
    ::CloseClipboard();
}

}  // namespace brennvar
