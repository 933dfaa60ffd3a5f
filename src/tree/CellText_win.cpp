#include "tree/CellText_win.h"

#include <algorithm>

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr std::string_view kDots = "...";

// One byte a character, and no character changes its neighbour.
bool HasPlainCharacters(int charset) {
    switch (charset) {
        case ANSI_CHARSET:
        case EASTEUROPE_CHARSET:
        case RUSSIAN_CHARSET:
        case TURKISH_CHARSET:
        case GREEK_CHARSET:
        case BALTIC_CHARSET: return true;
        default: return false;
    }
}

std::size_t IndexOf(char character) {
    return static_cast<unsigned char>(character);
}

}  // namespace

void CellText::SetFont(HFONT font) {
    m_font = font;
    const HDC dc = ::GetDC(nullptr);
    {
        const CSelect select(dc, font);
        TEXTMETRICA metrics{};
        ::GetTextMetricsA(dc, &metrics);
        m_lineHeight = metrics.tmHeight;
        m_hasWidths = HasPlainCharacters(metrics.tmCharSet) && ::GetCharWidth32A(dc, 0, 255, m_widths.data());
    }
    ::ReleaseDC(nullptr, dc);
}

int CellText::Width(HDC dc, std::string_view text, int limit) const {
    if (!m_hasWidths) {
        SIZE size{};
        ::GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size);
        return size.cx;
    }
    int width = 0;
    for (const char character : text) {
        width += m_widths[IndexOf(character)];
        if (width > limit) break;
    }
    return width;
}

void CellText::Draw(HDC dc, const RECT& place, const std::string& text, bool isRight, Cut cut) {
    const int room = WidthOf(place);
    if (text.empty() || room <= 0) return;
    const int top = place.top + (HeightOf(place) - m_lineHeight) / 2;
    const int width = Width(dc, text, room);
    if (width > room) {
        DrawCut(dc, place, text, top, cut);
        return;
    }
    const int left = isRight ? place.right - width : place.left;
    ::ExtTextOutA(dc, left, top, 0, nullptr, text.data(), static_cast<UINT>(text.size()), nullptr);
}

std::size_t CellText::CountFitting(std::string_view text, int& room) const {
    std::size_t count = 0;
    while (count < text.size() && m_widths[IndexOf(text[count])] <= room) {
        room -= m_widths[IndexOf(text[count++])];
    }
    return count;
}

void CellText::DrawCut(HDC dc, const RECT& place, const std::string& text, int top, Cut cut) {
    if (!m_hasWidths) {
        RECT box{place.left, top, place.right, top + m_lineHeight};
        ::DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &box,
                    DT_SINGLELINE | DT_NOPREFIX | (cut == Cut::Path ? DT_PATH_ELLIPSIS : DT_END_ELLIPSIS));
        return;
    }
    const int dot = m_widths[IndexOf('.')];
    int room = WidthOf(place) - static_cast<int>(kDots.size()) * dot;
    const std::size_t fileName = cut == Cut::Path ? text.rfind('\\') : std::string::npos;
    const std::string_view tail =
        fileName == std::string::npos ? std::string_view() : std::string_view(text).substr(fileName);
    const int tailWidth = Width(dc, tail, room);
    if (!tail.empty() && tailWidth <= room) {
        room -= tailWidth;
        m_cut.assign(text, 0, CountFitting(text, room)).append(kDots).append(tail);
    } else {
        // Where not even the file name fits, its beginning is worth more than that of the path.
        const std::string_view kept = tail.empty() ? std::string_view(text) : tail.substr(1);
        // Where not even the dots fit, as many of them as do.
        const int dots = room < 0 ? WidthOf(place) / std::max(1, dot) : static_cast<int>(kDots.size());
        m_cut.assign(kept.substr(0, CountFitting(kept, room)));
        m_cut.append(kDots.substr(0, static_cast<std::size_t>(dots)));
    }
    ::ExtTextOutA(dc, place.left, top, 0, nullptr, m_cut.data(), static_cast<UINT>(m_cut.size()), nullptr);
}

}  // namespace brennvar
