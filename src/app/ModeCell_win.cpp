#include "app/ModeCell_win.h"

#include <utility>

#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

// As everywhere where something is allowed, denied or asked about; on a light disc they show on any ground.
constexpr COLORREF kAllow = RGB(46, 158, 91);
constexpr COLORREF kBlock = RGB(165, 14, 44);
constexpr COLORREF kNormal = RGB(255, 128, 64);
constexpr COLORREF kGround = RGB(255, 255, 255);

// At 96 pixels per inch.
constexpr int kDisc = 16;
constexpr int kDotInset = 3;
constexpr int kHoleInset = 5;
constexpr int kBarInset = 5;
constexpr int kBarHeight = 2;
constexpr int kGap = 6;

// A place in the drawing of a smooth DC.
RECT Large(RECT place) {
    for (LONG* edge : {&place.left, &place.top, &place.right, &place.bottom}) *edge *= CSmoothDc::kFactor;
    return place;
}

}  // namespace

void ModeCell::Create(DrawnTexts& texts, int id, const Look& look) {
    CDrawnText::Create(texts, "", LabelKind::Plain, SS_ENDELLIPSIS, id, look);
    SetColour(look.skin.GetSkinColor("BUTTON_MENU_DEFAULT", 255, 255, 255));
}

void ModeCell::Show(ProtectionMode mode, const std::string& text) {
    if (std::exchange(m_mode, mode) != mode) Repaint();
    SetText(text);
}

void ModeCell::Paint(HDC dc) const {
    if (!IsSeenOn(dc)) return;
    RECT words = Place();
    const int size = Scale(kDisc);
    const LONG top = words.top + (HeightOf(words) - size) / 2;
    PaintDot(dc, {words.left, top, words.left + size, top + size});
    words.left += size + Scale(kGap);
    PaintText(dc, words);
}

// Normal: a full dot. Allow All: open, a ring. Block All: barred.
void ModeCell::PaintDot(HDC dc, const RECT& place) const {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    const RECT disc{0, 0, WidthOf(place), HeightOf(place)};
    smooth.FillDisc(Large(disc), kGround);
    const RECT dot = Inset(disc, Scale(kDotInset));
    switch (m_mode) {
        case ProtectionMode::AllowAll:
            smooth.FillDisc(Large(dot), kAllow);
            smooth.FillDisc(Large(Inset(disc, Scale(kHoleInset))), kGround);
            break;
        case ProtectionMode::BlockAll: {
            smooth.FillDisc(Large(dot), kBlock);
            const LONG top = (HeightOf(disc) - Scale(kBarHeight)) / 2;
            smooth.FillPill(
                Large({Scale(kBarInset), top, WidthOf(disc) - Scale(kBarInset), top + Scale(kBarHeight)}), kGround);
            break;
        }
        default: smooth.FillDisc(Large(dot), kNormal); break;
    }
}

}  // namespace brennvar
