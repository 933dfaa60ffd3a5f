#include "ui/WideText_win.h"

#include <algorithm>

namespace brennvar {
namespace {

UINT CodePageOf(HFONT font) {
    LOGFONTA details{};
    ::GetObjectA(font, sizeof(details), &details);
    // The number itself is given in the place of a pointer.
    CHARSETINFO info{};
    const auto charset = reinterpret_cast<DWORD*>(static_cast<DWORD_PTR>(details.lfCharSet));
    return ::TranslateCharsetInfo(charset, &info, TCI_SRCCHARSET) ? info.ciACP : CP_ACP;
}

}  // namespace

std::wstring Widen(const std::string& text, HFONT font) {
    const UINT page = CodePageOf(font);
    const auto size = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(std::max(0, ::MultiByteToWideChar(page, 0, text.data(), size, nullptr, 0))),
        L'\0');
    ::MultiByteToWideChar(page, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

}  // namespace brennvar
