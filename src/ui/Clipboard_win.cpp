#include "ui/Clipboard_win.h"

#include <cstring>

namespace brennvar {

void CopyToClipboard(HWND owner, const std::string& text) {
    if (!::OpenClipboard(owner)) return;
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* bytes = memory ? ::GlobalLock(memory) : nullptr) {
        std::memcpy(bytes, text.c_str(), text.size() + 1);
        ::GlobalUnlock(memory);
        // The clipboard owns the memory when it has taken it.
        if (!::SetClipboardData(CF_TEXT, memory)) ::GlobalFree(memory);
    } else if (memory) {
        ::GlobalFree(memory);
    }
    ::CloseClipboard();
}

}  // namespace brennvar
