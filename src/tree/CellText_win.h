// Text in one line, cut with three dots where it does not fit. The widths of all characters are measured once for
// each font, which makes cutting a matter of adding; fonts whose characters depend on their neighbours or take two
// bytes are left to Windows.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "base/Windows_win.h"

namespace brennvar {

class CellText {
public:
    // The font is borrowed and has to be selected into the DC of every call below.
    void SetFont(HFONT font);
    [[nodiscard]] HFONT Font() const { return m_font; }

    // In pixels. Stops counting when the limit is passed.
    [[nodiscard]] int Width(HDC dc, std::string_view text, int limit) const;
    enum class Cut {
        End,
        Path,  // in the middle: what stands behind the last backslash stays as far as it fits
    };
    // In the vertical middle of the place, in the DC's text colour, without ground.
    void Draw(HDC dc, const RECT& place, const std::string& text, bool isRight, Cut cut);

private:
    void DrawCut(HDC dc, const RECT& place, const std::string& text, int top, Cut cut);
    // As many characters from there on as fit; room is what is left then.
    [[nodiscard]] std::size_t CountFitting(std::string_view text, int& room) const;

    HFONT m_font = nullptr;
    int m_lineHeight = 0;
    bool m_hasWidths = false;  // of single characters, that add up
    std::array<int, 256> m_widths{};
    std::string m_cut;  // kept for its memory
};

}  // namespace brennvar
