// What lies on the clipboard as text, or why nothing can be said of it.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar::test {

inline std::wstring ClipboardText() {
    if (!::OpenClipboard(nullptr)) return L"not opened";
    const HANDLE data = ::GetClipboardData(CF_UNICODETEXT);
    const void* const bytes = data ? ::GlobalLock(data) : nullptr;
    std::wstring text = bytes ? static_cast<const wchar_t*>(bytes) : L"";
    if (bytes) ::GlobalUnlock(data);
    ::CloseClipboard();
    return text;
}

}  // namespace brennvar::test
