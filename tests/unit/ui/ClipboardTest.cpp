#include "ui/Clipboard_win.h"

#include <gtest/gtest.h>

#include "ui/Fonts_win.h"

namespace brennvar {
namespace {

std::wstring ClipboardText() {
    if (!::OpenClipboard(nullptr)) return L"not opened";
    const HANDLE data = ::GetClipboardData(CF_UNICODETEXT);
    const void* const bytes = data ? ::GlobalLock(data) : nullptr;
    const std::wstring text = bytes ? static_cast<const wchar_t*>(bytes) : L"";
    if (bytes) ::GlobalUnlock(data);
    ::CloseClipboard();
    return text;
}

TEST(ClipboardTest, TextsKeepTheLettersOfTheirLanguage) {
    const HWND owner = ::CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                         ::GetModuleHandleA(nullptr), nullptr);
    const std::string bytes = "\xC4\xE0 a";
    CopyToClipboard(owner, bytes, CFonts(RUSSIAN_CHARSET).Text());
    EXPECT_EQ(ClipboardText(), L"\u0414\u0430 a");
    CopyToClipboard(owner, bytes, CFonts(ANSI_CHARSET).Text());
    EXPECT_EQ(ClipboardText(), L"\u00C4\u00E0 a");
    CopyToClipboard(owner, "", CFonts().Text());
    EXPECT_EQ(ClipboardText(), L"");
    ::DestroyWindow(owner);
}

}  // namespace
}  // namespace brennvar
