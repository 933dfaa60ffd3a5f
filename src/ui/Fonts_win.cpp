#include "ui/Fonts_win.h"

namespace brennvar {
namespace {

constexpr int kReferenceDpi = 96;
// At 96 per inch. Above zero the height counts the whole line, below it the letters only.
constexpr int kTextHeight = 15;
constexpr int kBoldHeight = 16;
constexpr int kTitleHeight = -16;

int ScreenDpi() {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi;
}

UniqueFont MakeFont(int height, int weight, BYTE charset, const char* face,
                    DWORD pitchAndFamily = DEFAULT_PITCH | FF_SWISS) {
    return UniqueFont(::CreateFontA(Scale(height), 0, 0, 0, weight, FALSE, FALSE, FALSE, charset,
                                    OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, pitchAndFamily,
                                    face));
}

}  // namespace

int Scale(int pixels) {
    // The process sees one resolution from its start to its end.
    static const int kDpi = ScreenDpi();
    return ::MulDiv(pixels, kDpi, kReferenceDpi);
}

CFonts::CFonts(BYTE charset, const char* face)
    : m_text(MakeFont(kTextHeight, FW_NORMAL, charset, face)),
      m_bold(MakeFont(kBoldHeight, FW_BOLD, charset, face)),
      m_title(MakeFont(kTitleHeight, FW_BOLD, charset, face)),
      m_fixed(MakeFont(kTextHeight, FW_NORMAL, charset, kFixedFace, FIXED_PITCH | FF_MODERN)) {}

UniqueFont Underlined(HFONT font) {
    LOGFONTA description{};
    ::GetObjectA(font, sizeof(description), &description);
    description.lfUnderline = TRUE;
    return UniqueFont(::CreateFontIndirectA(&description));
}

void SetControlFont(HWND control, HFONT font) {
    ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

}  // namespace brennvar
