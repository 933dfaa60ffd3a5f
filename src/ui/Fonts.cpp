#include "ui/Fonts.h"

namespace brennvar {
namespace {

constexpr int kReferenceDpi = 96;
constexpr int kPointsPerInch = 72;
constexpr char kFace[] = "Segoe UI";
constexpr int kTextPoints = 9;
constexpr int kTitlePoints = 12;  // 16 pixels at 96 per inch

int ScreenDpi() {
    const HDC screen = ::GetDC(nullptr);
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi;
}

UniqueFont MakeFont(int points, int weight) {
    // Negative: the height of the letters without the line spacing.
    const int height = -::MulDiv(points, ScreenDpi(), kPointsPerInch);
    return UniqueFont(::CreateFontA(height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                    OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                                    DEFAULT_PITCH | FF_SWISS, kFace));
}

}  // namespace

int Scale(int pixels) {
    // The process sees one resolution from its start to its end.
    static const int kDpi = ScreenDpi();
    return ::MulDiv(pixels, kDpi, kReferenceDpi);
}

CFonts::CFonts()
    : m_text(MakeFont(kTextPoints, FW_NORMAL)),
      m_bold(MakeFont(kTextPoints, FW_BOLD)),
      m_title(MakeFont(kTitlePoints, FW_BOLD)) {}

void SetControlFont(HWND control, HFONT font) {
    ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
}

}  // namespace brennvar
