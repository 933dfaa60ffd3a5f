#include "controls/DrawnText_win.h"

#include <algorithm>
#include <utility>

#include "controls/DrawnTextQuery_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {

void DrawnTexts::Paint(HDC dc) const {
    for (const CDrawnText* text : m_texts) text->Paint(dc);
}

void DrawnTexts::TellParts(PictureParts& parts, std::uint64_t ground) const {
    RECT client{};
    ::GetClientRect(m_window, &client);
    parts.push_back({client, ground});
    for (const CDrawnText* text : m_texts) parts.push_back(text->Part());
}

void DrawnTexts::Repaint(const RECT& place) const {
    // Without a window Windows would take the null for all windows of the screen. One that is not seen is painted
    // as a whole when it is shown.
    if (m_window && ::IsWindowVisible(m_window)) {
        ::InvalidateRect(m_window, &place, m_paintedIn == PaintedIn::Ground);
    }
}

std::optional<LRESULT> DrawnTexts::Answer(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (message != kDrawnTextQuery) return std::nullopt;
    const auto found = std::find_if(m_texts.begin(), m_texts.end(), [wParam](const CDrawnText* text) {
        return text->Id() >= 0 && static_cast<WPARAM>(text->Id()) == wParam;
    });
    if (found == m_texts.end()) return 0;
    const std::string& text = (*found)->Text();
    const auto before = static_cast<std::size_t>(lParam);
    std::uint64_t answer = kDrawnTextIsThere;
    for (std::size_t index = 0; index < kDrawnTextPiece && before < text.size() && index < text.size() - before;
         ++index) {
        answer |= static_cast<std::uint64_t>(static_cast<unsigned char>(text[before + index])) << (8 * index);
    }
    return static_cast<LRESULT>(answer);
}

void DrawnTexts::TellPart(int part, AccessibleThing& thing) const {
    const CDrawnText& text = *m_texts[static_cast<std::size_t>(part - 1)];
    thing.role = AccessibleRole::StaticText;
    thing.name = text.Text();
    thing.place = text.Place();
    if (!text.IsShown()) thing.Set(STATE_SYSTEM_INVISIBLE, true);
    thing.Set(STATE_SYSTEM_READONLY, true);
    thing.font = text.Font();
}

int DrawnTexts::PartAt(POINT point) const {
    const auto found = std::find_if(m_texts.begin(), m_texts.end(), [point](const CDrawnText* text) {
        return text->IsShown() && ::PtInRect(&text->Place(), point);
    });
    return found == m_texts.end() ? 0 : static_cast<int>(found - m_texts.begin()) + 1;
}

std::string DrawnTexts::LabelOf(HWND control) const {
    const int id = ::GetDlgCtrlID(control);
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&place), 2);
    const CDrawnText* unit = nullptr;
    for (const CDrawnText* text : m_texts) {
        if (!text->IsShown() || text->Text().empty()) continue;
        if (text->Id() == id && id > 0) return text->Text();
        const RECT& beside = text->Place();
        const bool isOnLine = beside.top < place.bottom && place.top < beside.bottom && beside.left >= place.right;
        if (isOnLine && (!unit || beside.left < unit->Place().left)) unit = text;
    }
    return unit ? unit->Text() : std::string();
}

void DrawnTexts::Announce(const CDrawnText& text) const {
    if (!m_window || !text.IsShown()) return;
    const auto found = std::find(m_texts.begin(), m_texts.end(), &text);
    ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, m_window, OBJID_CLIENT,
                     static_cast<LONG>(found - m_texts.begin()) + 1);
}

CDrawnText::~CDrawnText() {
    if (m_texts) std::erase(m_texts->m_texts, this);
}

void CDrawnText::Create(DrawnTexts& texts, const std::string& text, LabelKind kind, DWORD style, int id,
                        const Look& look) {
    m_texts = &texts;
    m_text = text;
    m_id = id;
    m_font = LabelFont(kind, look.fonts);
    m_colour = LabelColour(kind, look.colours);
    m_format = LabelFormat(style) | DT_NOPREFIX;
    texts.m_texts.push_back(this);
}

void CDrawnText::SetText(const std::string& text) {
    if (text == m_text) return;
    m_text = text;
    Repaint();
    if (m_texts) m_texts->Announce(*this);
}

void CDrawnText::SetColour(COLORREF colour) {
    if (std::exchange(m_colour, colour) != colour) Repaint();
}

void CDrawnText::Place(const RECT& place) {
    if (::EqualRect(&place, &m_place)) return;
    Repaint();  // where it no longer is
    m_place = place;
    Repaint();
}

void CDrawnText::SetShown(bool isShown) {
    if (isShown == m_isShown) return;
    m_isShown = true;
    Repaint();
    m_isShown = isShown;
}

SIZE CDrawnText::Measure(int width) const {
    return MeasureText(m_font, m_text, width);
}

void CDrawnText::Paint(HDC dc) const {
    if (IsSeenOn(dc)) PaintText(dc, m_place);
}

void CDrawnText::PaintText(HDC dc, const RECT& place) const {
    if (!m_text.empty()) DrawLabel(dc, m_font, place, m_text, m_colour, m_format);
}

void CDrawnText::Repaint() {
    m_look = NextLook();
    if (m_texts && m_isShown && !::IsRectEmpty(&m_place)) m_texts->Repaint(m_place);
}

}  // namespace brennvar
