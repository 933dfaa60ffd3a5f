// The fonts of every window, and sizes in the pixels of the screen.
#pragma once

#include "base/Handles_win.h"

namespace brennvar {

// Pixels at 96 per inch to pixels of this screen. All layouts are written at 96 per inch.
[[nodiscard]] int Scale(int pixels);

class CFonts {
public:
    static constexpr char kFace[] = "Segoe UI";
    static constexpr char kFixedFace[] = "Consolas";  // where it lacks, Windows takes another of one width
    // The character set of the active language (0: ANSI): it decides what the bytes of a text mean.
    explicit CFonts(BYTE charset = ANSI_CHARSET, const char* face = kFace);
    [[nodiscard]] HFONT Text() const { return m_text.Get(); }
    [[nodiscard]] HFONT Bold() const { return m_bold.Get(); }    // emphasised text
    [[nodiscard]] HFONT Title() const { return m_title.Get(); }  // page titles, and what decides a question
    [[nodiscard]] HFONT Fixed() const { return m_fixed.Get(); }  // letters of one width

private:
    UniqueFont m_text;
    UniqueFont m_bold;
    UniqueFont m_title;
    UniqueFont m_fixed;
};

// The same font with a line below the letters, as links have it.
[[nodiscard]] UniqueFont Underlined(HFONT font);

// Gives a font to a control without painting it yet.
void SetControlFont(HWND control, HFONT font);

}  // namespace brennvar
