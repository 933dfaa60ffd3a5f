#include "controls/Button_win.h"

#include <algorithm>
#include <functional>

#include "ui/ChildControls_win.h"
#include "ui/FocusOnce_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kStateCount = 3;
constexpr int kTextPadding = 6;            // left and right of a label
constexpr int kPageTextLeft = 52;          // beside the icon, which is part of the picture (16 + 24 + 12)
constexpr int kFocusInset = 3;             // the focus frame stands inside the ring of a default button
constexpr SIZE kPageFocusInset = {10, 4};  // and inside the ground of a page button, beside its bar
constexpr int kFocusShare = 70;            // of the ground in the focus frame, so that it stays behind the text
constexpr int kSelectedBar = 3;            // at the left of the selected page's plain button
constexpr int kRingDiameter = 8;           // round as the corners of the delivered pictures
constexpr BYTE kDisabledOpacity = 115;     // of 255
constexpr int kTextMarkSize = 12;          // of a mark before the text
constexpr int kDisabledMarkShare = 110;    // of a mark, towards the ground
constexpr int kDisabledTextShare = 110;    // towards the ground, over which the picture has faded as well
// Without a picture: a navy on which the default text colour, white, reads.
// About what shines through a disabled button that is not flat: the dark column, or the caption band.
constexpr COLORREF kColumnGround = RGB(18, 50, 74);
constexpr COLORREF kPlainGround[] = {RGB(30, 72, 104), RGB(44, 94, 132), kColumnGround};

// A line from corner to corner and back, two pixels wide.
void DrawCross(HDC dc, const RECT& box, COLORREF colour) {
    for (int i = 0; i < WidthOf(box) - 1; ++i) {
        const LONG y = box.top + i;
        FillSolid(dc, {box.left + i, y, box.left + i + 2, y + 1}, colour);
        FillSolid(dc, {box.right - i - 2, y, box.right - i, y + 1}, colour);
    }
}

constexpr int kTextMargins = 16;  // both, at 96 pixels per inch

// A frame of one pixel with the corners of the delivered pictures.
void DrawRing(HDC dc, const RECT& place, COLORREF colour) {
    const UniquePen pen(::CreatePen(PS_SOLID, 1, colour));
    const CSelect selectPen(dc, pen.Get());
    const CSelect selectBrush(dc, ::GetStockObject(NULL_BRUSH));
    ::RoundRect(dc, place.left, place.top, place.right, place.bottom, kRingDiameter, kRingDiameter);
}

}  // namespace

bool FitsButton(const ButtonKind& kind, const Look& look, const std::string& text) {
    return MeasureText(look.fonts.Text(), text, 0).cx <= Scale(kind.plainSize.cx - kTextMargins);
}

void CButton::Create(HWND parent, const ButtonKind& kind, const std::string& text, int id, const Look& look) {
    Resolve(kind, look);
    const DWORD tabStop = kind.form == ButtonForm::Caption ? 0U : WS_TABSTOP;
    Make(parent, "BUTTON", text, BS_PUSHBUTTON | tabStop, id, look.fonts.Text(), 0, m_size);
}

void CButton::Adopt(HWND control, const ButtonKind& kind, const Look& look) {
    Resolve(kind, look);
    Attach(control, look.fonts.Text());
    ::SetWindowPos(Window(), nullptr, 0, 0, m_size.cx, m_size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CButton::Resolve(const ButtonKind& kind, const Look& look) {
    m_form = kind.form;
    m_rank = kind.rank;
    m_plainGlyph = kind.plainGlyph;
    m_image = CSkinImage::Load(look.skin.GetSkinImagePath(kind.imageKey, kind.defaultFile));
    m_size = m_image.FrameSizeOr({Scale(kind.plainSize.cx), Scale(kind.plainSize.cy)}, kStateCount);
    m_colours = look.colours;
    const std::string key = kind.colourKey;
    m_textColours = {look.skin.GetSkinColor(key + "_DEFAULT", 255, 255, 255),
                     look.skin.GetSkinColor(key + "_ACTIVE", 255, 255, 255),
                     look.skin.GetSkinColor(key + "_DOWN", 255, 255, 255)};
}

void CButton::MoveTo(int left, int top) const {
    ::SetWindowPos(Window(), nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

void CButton::SetMark(ActionMark mark) {
    m_mark = mark;
    Repaint();
}

void CButton::SetSelected(bool selected) {
    if (selected == m_isSelected) return;
    m_isSelected = selected;
    Repaint();
    Announce(selected ? EVENT_OBJECT_SELECTION : EVENT_OBJECT_STATECHANGE);
}

Touch CButton::CurrentTouch() const {
    const bool isPushed = (::SendMessageA(Window(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    if (m_isSelected || isPushed) return Touch::Pressed;
    return IsHot() && IsEnabled() ? Touch::Hot : Touch::Rest;
}

bool CButton::IsDefault() const {
    return m_form == ButtonForm::Labelled && (Style() & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
}

bool CButton::TellParts(PictureParts& parts) const {
    // Everything that painting asks for, as Windows changes its buttons on its own.
    const std::string state = {static_cast<char>('0' + static_cast<int>(CurrentTouch())),
                               m_isSelected ? 's' : '-',
                               IsEnabled() ? 'e' : '-',
                               IsDefault() ? 'd' : '-',
                               FocusOnce::Window() == Window() && ShowsFocus() ? 'f' : '-',
                               PrefixFormat() != 0 ? 'p' : '-',
                               m_mark ? static_cast<char>('0' + static_cast<int>(*m_mark)) : '-'};
    parts.push_back({ClientRect(), std::hash<std::string>()(state + Text()) | 1});
    return true;
}

void CButton::OnPaint(HDC dc, const RECT& client) {
    const Touch touch = CurrentTouch();
    if (IsFlat()) {
        PaintFlat(dc, client, touch);
    } else if (m_image) {
        m_image.DrawFrame(dc, client, static_cast<int>(touch), kStateCount, IsEnabled() ? 255 : kDisabledOpacity);
    } else {
        PaintPlain(dc, client, touch);
    }
    if (m_form != ButtonForm::Caption) PaintText(dc, client, touch);
    if (IsDefault() && IsEnabled()) DrawRing(dc, client, m_colours.accent);
    if (ShowsFocus()) PaintFocus(dc, client, touch);
}

void CButton::PaintFocus(HDC dc, const RECT& client, Touch touch) const {
    const COLORREF colour =
        MixColours(TextColour(touch), IsFlat() ? m_colours.button : kPlainGround[0], kFocusShare);
    if (m_form != ButtonForm::PageEntry) return DrawFrame(dc, Inset(client, kFocusInset), colour);
    RECT place = client;
    ::InflateRect(&place, -kPageFocusInset.cx, -kPageFocusInset.cy);
    DrawRing(dc, place, colour);
}

bool CButton::IsFlat() const {
    return m_form == ButtonForm::Labelled && (m_rank != ButtonRank::Primary || !IsEnabled());
}

void CButton::PaintFlat(HDC dc, const RECT& client, Touch touch) const {
    constexpr int kTouchShare[] = {0, 20, 44};  // of the text's colour in the ground, by touch
    const COLORREF ground = MixColours(m_colours.button, m_colours.text, kTouchShare[static_cast<int>(touch)]);
    const UniquePen pen(::CreatePen(PS_SOLID, 1, IsEnabled() ? m_colours.frame1 : m_colours.frame2));
    const UniqueBrush brush(::CreateSolidBrush(ground));
    const CSelect selectPen(dc, pen.Get());
    const CSelect selectBrush(dc, brush.Get());
    ::RoundRect(dc, client.left, client.top, client.right, client.bottom, kRingDiameter, kRingDiameter);
}

COLORREF CButton::TextColour(Touch touch) const {
    if (!IsFlat()) return m_textColours[static_cast<std::size_t>(touch)];
    if (!IsEnabled()) return MixColours(m_colours.quietText, m_colours.button, kDisabledTextShare);
    return m_rank == ButtonRank::Destructive ? m_colours.danger : m_colours.text;
}

void CButton::PaintPlain(HDC dc, const RECT& client, Touch touch) const {
    const auto shown = [this](COLORREF colour) {
        return IsEnabled() ? colour : MixColours(colour, kColumnGround, 255 - kDisabledOpacity);
    };
    FillSolid(dc, client, shown(kPlainGround[static_cast<int>(touch)]));
    if (m_form == ButtonForm::PageEntry && m_isSelected) {
        FillSolid(dc, {client.left, client.top, client.left + kSelectedBar, client.bottom}, m_colours.accent);
    }
    if (m_form != ButtonForm::Caption) return;
    const COLORREF colour = shown(m_textColours[static_cast<std::size_t>(touch)]);
    const RECT box = Centred(client, {Scale(10), Scale(10)});
    switch (m_plainGlyph) {
        case '-': FillSolid(dc, {box.left, box.bottom - 2, box.right, box.bottom}, colour); break;
        case '#': DrawFrame(dc, box, colour); break;
        case 'x': DrawCross(dc, box, colour); break;
        default:
            DrawLabel(dc, Font(), client, std::string(1, m_plainGlyph), colour,
                      DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
}

void CButton::PaintText(HDC dc, const RECT& client, Touch touch) const {
    const bool isPage = m_form == ButtonForm::PageEntry;
    const int padding = Scale(kTextPadding);
    RECT place{client.left + (isPage ? kPageTextLeft : padding), client.top, client.right - padding, client.bottom};
    if (m_mark) place = PaintMark(dc, place);
    COLORREF colour = TextColour(touch);
    if (!IsEnabled() && !IsFlat()) colour = MixColours(colour, kColumnGround, kDisabledTextShare);
    DrawLabel(
        dc, Font(), place, Text(), colour,
        (isPage || m_mark ? DT_LEFT : DT_CENTER) | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | PrefixFormat());
}

RECT CButton::PaintMark(HDC dc, const RECT& place) const {
    const LONG side = Scale(kTextMarkSize);
    const LONG before = side + Scale(kMarkGap);
    // In the middle with the text, which is cut where there is no room for both.
    const LONG width = std::min<LONG>(before + MeasureText(Font(), Text(), 0).cx, WidthOf(place));
    const LONG left = place.left + (WidthOf(place) - width) / 2;
    const RECT mark = Centred({left, place.top, left + side, place.bottom}, {side, side});
    MarkColours colours{.disc = RGB(255, 255, 255), .shape = ActionColour(*m_mark)};
    if (!IsEnabled()) {
        colours = {.disc = MixColours(colours.disc, m_colours.button, kDisabledMarkShare),
                   .shape = MixColours(colours.shape, m_colours.button, kDisabledMarkShare)};
    }
    DrawActionMark(dc, mark, *m_mark, colours);
    return {left + before, place.top, place.right, place.bottom};
}

std::optional<LRESULT> CButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_form != ButtonForm::Caption) return std::nullopt;
    if (message == WM_SETFOCUS) m_focusBefore = reinterpret_cast<HWND>(wParam);
    if (message != WM_LBUTTONUP) return std::nullopt;
    // Windows gives a clicked button the keyboard. From a button that Tab does not reach it goes back, unless the
    // click has moved it elsewhere or ended the window.
    const HWND window = Window();
    const HWND before = m_focusBefore;
    const LRESULT result = CallWindows(message, wParam, lParam);
    if (::IsWindow(window) && ::GetFocus() == window && ::IsWindow(before)) ::SetFocus(before);
    return result;
}

void CButton::TellAccessible(AccessibleThing& thing) const {
    const bool isPage = m_form == ButtonForm::PageEntry;
    TellButton(thing);
    if (isPage) {
        thing.role = AccessibleRole::PageTab;
        thing.action = AccessibleAction::Select;
        thing.Set(STATE_SYSTEM_SELECTABLE, true);
        thing.Set(STATE_SYSTEM_SELECTED, m_isSelected);
    }
    thing.Set(STATE_SYSTEM_DEFAULT, IsDefault());
}

}  // namespace brennvar
