#include "controls/Toggle_win.h"

#include <algorithm>

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kStateCount = 6;
constexpr int kCheckedStates = 3;  // the first of the checked ones
constexpr int kPlainSide = 16;
constexpr int kGap = 8;          // between picture and text
constexpr int kFocusMargin = 2;  // between text and focus frame
constexpr BYTE kDisabledOpacity = 115;
constexpr int kDisabledTextShare = 90;  // towards the page: quiet, and still legible

}  // namespace

void CToggle::Resolve(const Kind& kind, const Look& look) {
    m_image = CSkinImage::Load(look.skin.GetSkinImagePath(kind.imageKey, kind.defaultFile));
    m_colours = look.colours;
    m_isRound = kind.isRound;
}

bool CToggle::IsChecked() const {
    return ::SendMessageA(Window(), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void CToggle::SetChecked(bool checked) const {
    ::SendMessageA(Window(), BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

SIZE CToggle::PictureSize() const {
    return m_image.FrameSizeOr({Scale(kPlainSide), Scale(kPlainSide)}, kStateCount);
}

int CToggle::HeightAt(int width) const {
    const CTextDc dc(Font());
    const Layout layout = LayOut(dc.Dc(), {0, 0, width, 0});
    return std::max<int>(HeightOf(layout.picture), HeightOf(layout.text) + 2 * kFocusMargin);
}

int CToggle::FullWidth() const {
    return PictureSize().cx + Scale(kGap) + MeasureText(Font(), Text(), 0).cx + 2 * kFocusMargin;
}

CToggle::Layout CToggle::LayOut(HDC dc, const RECT& client) const {
    const SIZE picture = PictureSize();
    const CSelect select(dc, Font());
    TEXTMETRICA metrics{};
    ::GetTextMetricsA(dc, &metrics);
    RECT text{client.left + picture.cx + Scale(kGap), 0, client.right - kFocusMargin, 0};
    const std::string label = Text();
    if (!label.empty()) {
        const LONG right = text.right;
        ::DrawTextA(dc, label.c_str(), static_cast<int>(label.size()), &text, DT_WORDBREAK | DT_CALCRECT);
        text.right = std::min(text.right, right);
    }
    // Both stand with the middle of the first line on one height, and together in the middle of the control.
    const LONG firstLine = std::max<LONG>(metrics.tmHeight, picture.cy);
    const LONG block = std::max<LONG>(HeightOf(text), metrics.tmHeight) + firstLine - metrics.tmHeight;
    const bool isAtTop = (Style() & BS_VCENTER) == BS_TOP;
    const LONG top = isAtTop ? client.top : client.top + std::max<LONG>(0, (HeightOf(client) - block) / 2);
    ::OffsetRect(&text, 0, top + (firstLine - metrics.tmHeight) / 2);
    const LONG pictureTop = top + (firstLine - picture.cy) / 2;
    return {{client.left, pictureTop, client.left + picture.cx, pictureTop + picture.cy}, text};
}

void CToggle::OnPaint(HDC dc, const RECT& client) {
    const Layout layout = LayOut(dc, client);
    const bool isEnabled = IsEnabled();
    Touch touch = IsHot() && isEnabled ? Touch::Hot : Touch::Rest;
    if ((::SendMessageA(Window(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0) touch = Touch::Pressed;
    if (m_image) {
        const int state = static_cast<int>(touch) + (IsChecked() ? kCheckedStates : 0);
        m_image.DrawFrame(dc, layout.picture, state, kStateCount, isEnabled ? 255 : kDisabledOpacity);
    } else {
        PaintPlain(dc, layout.picture, touch);
    }
    const COLORREF colour =
        isEnabled ? m_colours.text : MixColours(m_colours.quietText, m_colours.page, kDisabledTextShare);
    DrawLabel(dc, Font(), layout.text, Text(), colour, DT_WORDBREAK | PrefixFormat());
    if (ShowsFocus()) DrawFrame(dc, Inset(layout.text, -kFocusMargin), m_colours.quietText);
}

void CToggle::PaintPlain(HDC dc, const RECT& place, Touch touch) const {
    const COLORREF ground = touch == Touch::Pressed || !IsEnabled() ? m_colours.page : m_colours.list;
    const COLORREF frame = touch == Touch::Rest ? m_colours.fieldFrame : m_colours.accent;
    const COLORREF mark = IsEnabled() ? m_colours.text : m_colours.quietText;
    const RECT inner = Inset(place, WidthOf(place) / 4);
    if (!m_isRound) {
        FillSolid(dc, place, ground);
        DrawFrame(dc, place, frame);
        if (IsChecked()) FillSolid(dc, inner, mark);
        return;
    }
    const UniquePen pen(::CreatePen(PS_SOLID, 1, frame));
    const CSelect selectPen(dc, pen.Get());
    const CSelect selectBrush(dc, ::GetStockObject(DC_BRUSH));
    const COLORREF old = ::SetDCBrushColor(dc, ground);
    ::Ellipse(dc, place.left, place.top, place.right, place.bottom);
    if (IsChecked()) {
        ::SetDCBrushColor(dc, mark);
        const CSelect noPen(dc, ::GetStockObject(NULL_PEN));
        ::Ellipse(dc, inner.left, inner.top, inner.right + 1, inner.bottom + 1);
    }
    ::SetDCBrushColor(dc, old);
}

void CToggle::TellAccessible(AccessibleThing& thing) const {
    const bool isChecked = IsChecked();
    CControl::TellAccessible(thing);
    thing.role = m_isRound ? AccessibleRole::RadioButton : AccessibleRole::CheckBox;
    thing.Set(STATE_SYSTEM_CHECKED, isChecked);
    thing.action = isChecked && !m_isRound ? AccessibleAction::Uncheck : AccessibleAction::Check;
}

}  // namespace brennvar
