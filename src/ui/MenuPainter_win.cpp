#include "ui/MenuPainter_win.h"

#include <algorithm>
#include <array>
#include <utility>

#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kImageSize = 16;
constexpr int kBarWidth = 28;  // behind the images
constexpr int kTextGap = 8;
constexpr int kShortcutGap = 24;
constexpr int kRightEdge = 20;  // where the arrow of a sub-menu stands
constexpr int kItemHeight = 24;
constexpr int kItemPadding = 3;  // above and below a text that needs more
constexpr int kSeparatorHeight = 7;
constexpr int kArrowSize = 4;  // its width, and its height from the middle

// Of 255, towards the ground.
constexpr int kSeparatorShare = 128;
constexpr int kDisabledTextShare = 110;
constexpr int kDisabledSelectionShare = 128;
constexpr BYTE kDisabledOpacity = 110;

// MN_GETHMENU of Windows' menu windows: the menu that one of them shows.
constexpr UINT kGetMenuOfWindow = 0x01E1;

struct ItemText {
    std::string label;
    std::string shortcut;
};
ItemText SplitAtTab(const std::string& text) {
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos) return {text, ""};
    return {text.substr(0, tab), text.substr(tab + 1)};
}

int TextWidth(HDC dc, const std::string& text, UINT format) {
    RECT box{};
    ::DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &box, DT_SINGLELINE | DT_CALCRECT | format);
    return WidthOf(box);
}

}  // namespace

CMenuPainter::Colours::Colours(const Skin& skin)
    : border(skin.GetSkinColor("COLOR_TRAY_BORDER", 0, 0, 0)),
      selection(skin.GetSkinColor("COLOR_TRAY_SELECTION", 255, 173, 27)),
      text(skin.GetSkinColor("COLOR_TRAY_TEXT", 0, 0, 0)),
      ground(skin.GetSkinColor("COLOR_TRAY_TEXT_BACK", 255, 255, 255)),
      bar(skin.GetSkinColor("COLOR_TRAY_VERTICAL_BAR", 0, 0, 0)) {}

CMenuPainter::CMenuPainter(const Look& look, const CSkinImage* images)
    : m_look(look), m_images(images), m_colours(look.skin) {}

void CMenuPainter::Measure(const MenuItem& item, MEASUREITEMSTRUCT& measure) const {
    if (item.IsSeparator()) {
        measure.itemWidth = 0;
        measure.itemHeight = static_cast<UINT>(Scale(kSeparatorHeight));
        return;
    }
    const CTextDc dc(FontOf(item));
    const ItemText text = SplitAtTab(item.text);
    int width = Scale(kBarWidth + kTextGap + kRightEdge) + TextWidth(dc.Dc(), text.label, 0);
    if (!text.shortcut.empty()) width += Scale(kShortcutGap) + TextWidth(dc.Dc(), text.shortcut, DT_NOPREFIX);
    TEXTMETRICA metrics{};
    ::GetTextMetricsA(dc.Dc(), &metrics);
    const int height = std::max<int>(Scale(kItemHeight), metrics.tmHeight + 2 * Scale(kItemPadding));
    // What is longer is cut: neither Windows nor the user gets at a menu that is wider than the screen.
    measure.itemWidth = static_cast<UINT>(std::min(width, ::GetSystemMetrics(SM_CXSCREEN) / 2));
    measure.itemHeight = static_cast<UINT>(height);
}

void CMenuPainter::Draw(const MenuItem& item, const DRAWITEMSTRUCT& draw) const {
    const RECT& row = draw.rcItem;
    {
        const CBufferedDc buffer(draw.hDC, row);
        DrawRow(item, buffer.Dc(), row, draw.itemState);
    }
    // Windows would draw its own arrow of a sub-menu over ours.
    ::ExcludeClipRect(draw.hDC, row.left, row.top, row.right, row.bottom);
}

void CMenuPainter::DrawRow(const MenuItem& item, HDC dc, const RECT& row, UINT state) const {
    const RECT bar{row.left, row.top, row.left + Scale(kBarWidth), row.bottom};
    const RECT text{bar.right + Scale(kTextGap), row.top, row.right - Scale(kRightEdge), row.bottom};
    FillSolid(dc, row, m_colours.ground);
    FillSolid(dc, bar, m_colours.bar);
    if (item.IsSeparator()) {
        const LONG middle = (row.top + row.bottom) / 2;
        FillSolid(dc, {text.left, middle, row.right, middle + 1},
                  MixColours(m_colours.border, m_colours.ground, kSeparatorShare));
        return;
    }
    // The one that the keyboard has reached is to be seen, though it cannot be chosen.
    if ((state & ODS_SELECTED) != 0) {
        const COLORREF selection = item.state.isDisabled
                                       ? MixColours(m_colours.selection, m_colours.ground, kDisabledSelectionShare)
                                       : m_colours.selection;
        FillSolid(dc, row, selection);
    }
    const COLORREF colour =
        item.state.isDisabled ? MixColours(m_colours.text, m_colours.ground, kDisabledTextShare) : m_colours.text;
    DrawImage(item, dc, bar);
    DrawTexts(item, dc, text, colour, (state & ODS_NOACCEL) == 0);
    if (item.subMenu) DrawArrow(dc, row, colour);
}

void CMenuPainter::DrawArrow(HDC dc, const RECT& row, COLORREF colour) const {
    const LONG middle = (row.top + row.bottom) / 2;
    const LONG size = Scale(kArrowSize);
    const LONG left = row.right - Scale(kRightEdge) / 2 - size / 2;
    for (LONG i = 0; i < size; ++i) {
        FillSolid(dc, {left + i, middle - size + i + 1, left + i + 1, middle + size - i}, colour);
    }
}

void CMenuPainter::DrawTexts(const MenuItem& item, HDC dc, const RECT& place, COLORREF colour,
                             bool showsMnemonic) const {
    const ItemText text = SplitAtTab(item.text);
    constexpr UINT kFormat = DT_SINGLELINE | DT_VCENTER;
    DrawLabel(dc, FontOf(item), place, text.label, colour,
              kFormat | DT_END_ELLIPSIS | (showsMnemonic ? 0U : DT_HIDEPREFIX));
    DrawLabel(dc, FontOf(item), place, text.shortcut, colour, kFormat | DT_RIGHT | DT_NOPREFIX);
}

void CMenuPainter::DrawImage(const MenuItem& item, HDC dc, const RECT& bar) const {
    const int size = Scale(kImageSize);
    const RECT place = Centred(bar, {size, size});
    const bool hasImage = m_images && *m_images && item.image != MenuImage::None;
    if (item.state.isChecked) {
        // On a ground of its own: the mark has the colour of the text, which may be that of the bar as well.
        const RECT box = Inset(place, -Scale(2));
        FillSolid(dc, box, m_colours.ground);
        DrawFrame(dc, box, m_colours.border);
        if (!hasImage) DrawCheckMark(dc, place);
    }
    if (!hasImage) return;
    m_images->DrawFrame(dc, place, static_cast<int>(item.image), static_cast<int>(MenuImage::Count),
                        item.state.isDisabled ? kDisabledOpacity : 255);
}

void CMenuPainter::DrawCheckMark(HDC dc, const RECT& box) const {
    const CSmoothDc smooth(dc, box);
    if (!smooth.Dc()) return;
    // In a square of 16 units.
    std::array<POINT, 3> points = {{{4, 8}, {7, 11}, {12, 5}}};
    const int unit = CSmoothDc::kFactor * WidthOf(box);
    for (POINT& point : points) point = {point.x * unit / 16, point.y * unit / 16};
    smooth.DrawLines(points.data(), static_cast<int>(points.size()), unit / 8, m_colours.text);
}

void CMenuPainter::DrawEdge(HWND menuWindow, HDC dc) const {
    RECT window{};
    ::GetWindowRect(menuWindow, &window);
    const RECT all{0, 0, WidthOf(window), HeightOf(window)};
    const auto menu = reinterpret_cast<HMENU>(::SendMessageA(menuWindow, kGetMenuOfWindow, 0, 0));
    RECT first{};
    RECT last{};
    const int count = ::GetMenuItemCount(menu);
    // What lies between the frame and the items; with scroll arrows there is no telling where those stand.
    if (count > 0 && ::GetMenuItemRect(nullptr, menu, 0, &first) &&
        ::GetMenuItemRect(nullptr, menu, static_cast<UINT>(count) - 1, &last)) {
        RECT items{};
        ::UnionRect(&items, &first, &last);
        ::OffsetRect(&items, -window.left, -window.top);
        if (items.left >= 0 && items.top >= 0 && items.right <= all.right && items.bottom <= all.bottom) {
            const LONG barRight = items.left + Scale(kBarWidth);
            for (const auto& [top, bottom] : {std::pair{0L, items.top}, std::pair{items.bottom, all.bottom}}) {
                FillSolid(dc, {0, top, barRight, bottom}, m_colours.bar);
                FillSolid(dc, {barRight, top, all.right, bottom}, m_colours.ground);
            }
            FillSolid(dc, {items.right, 0, all.right, all.bottom}, m_colours.ground);
            FillSolid(dc, {0, 0, items.left, all.bottom}, m_colours.bar);
        }
    }
    DrawFrame(dc, all, m_colours.border);
}

}  // namespace brennvar
