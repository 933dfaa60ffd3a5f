#include "tree/EmptyList_win.h"

#include <algorithm>

#include "ui/LineIcons_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kMargin = 16;
constexpr int kWidest = 440;  // longer lines are hard to read
constexpr int kPicture = 32;
constexpr int kPictureGap = 8;
constexpr int kActionGap = 8;
constexpr UINT kTextFormat = DT_CENTER | DT_NOPREFIX | DT_WORDBREAK;
constexpr UINT kActionFormat = DT_CENTER | DT_NOPREFIX | DT_SINGLELINE;

struct Places {
    RECT picture{};  // empty: no room for it
    RECT text{};
    RECT action{};
};

SIZE Measure(HDC dc, const std::string& text, LONG width, UINT format) {
    RECT needed{0, 0, width, 0};
    ::DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &needed, format | DT_CALCRECT);
    return {needed.right, needed.bottom};
}

Places PlaceParts(HDC dc, const RECT& rows, const EmptyNote& note) {
    Places places;
    RECT box = Inset(rows, Scale(kMargin));
    if (note.text.empty() || ::IsRectEmpty(&box)) return places;
    const LONG spare = WidthOf(box) - std::min<LONG>(WidthOf(box), Scale(kWidest));
    ::InflateRect(&box, -spare / 2, 0);
    const LONG textHeight = Measure(dc, note.text, WidthOf(box), kTextFormat).cy;
    const SIZE action = note.action.empty() ? SIZE{} : Measure(dc, note.action, 0, kActionFormat);
    LONG height = textHeight + (action.cy > 0 ? Scale(kActionGap) + action.cy : 0);
    const LONG picture = Scale(kPicture);
    // The words come first.
    const bool hasPicture =
        note.picture != EmptyPicture::None && height + picture + Scale(kPictureGap) <= HeightOf(box);
    if (hasPicture) height += picture + Scale(kPictureGap);
    LONG top = box.top + std::max(0L, (HeightOf(box) - height) / 2);
    const LONG middle = (box.left + box.right) / 2;
    if (hasPicture) {
        places.picture = {middle - picture / 2, top, middle - picture / 2 + picture, top + picture};
        top += picture + Scale(kPictureGap);
    }
    places.text = {box.left, top, box.right, std::min(top + textHeight, box.bottom)};
    top += textHeight + Scale(kActionGap);
    if (action.cy > 0 && top + action.cy <= box.bottom) {
        const LONG left = middle - action.cx / 2;
        places.action = {left, top, left + action.cx, top + action.cy};
    }
    return places;
}

}  // namespace

void PaintEmptyNote(HDC dc, const RECT& rows, const EmptyNote& note, const Palette& colours) {
    Places places = PlaceParts(dc, rows, note);
    if (!::IsRectEmpty(&places.picture)) {
        if (note.picture == EmptyPicture::Tray) DrawTray(dc, places.picture, colours.quietText);
        if (note.picture == EmptyPicture::Magnifier) DrawMagnifier(dc, places.picture, colours.quietText);
    }
    ::SetTextColor(dc, colours.quietText);
    ::DrawTextA(dc, note.text.c_str(), static_cast<int>(note.text.size()), &places.text, kTextFormat);
    if (::IsRectEmpty(&places.action)) return;
    ::SetTextColor(dc, colours.text);
    ::DrawTextA(dc, note.action.c_str(), static_cast<int>(note.action.size()), &places.action, kActionFormat);
    // Underlined, as all that a click follows.
    FillSolid(dc, {places.action.left, places.action.bottom - 1, places.action.right, places.action.bottom},
              colours.text);
}

RECT PlaceOfEmptyAction(HFONT font, const RECT& rows, const EmptyNote& note) {
    if (note.action.empty()) return {};
    const CTextDc dc(font);
    return PlaceParts(dc.Dc(), rows, note).action;
}

}  // namespace brennvar
