#include "app/WindowFrame_win.h"

#include "config/ResourceIds.h"
#include "ui/Fonts_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kCaptionHeight = 48;
constexpr int kColumnWidth = 184;
constexpr int kStatusHeight = 32;
constexpr int kEdge = 1;
constexpr int kTitleLeft = 16;    // of the shield in the caption
constexpr int kTitleTextGap = 4;  // from the shield to the name
constexpr int kButtonMargin = 8;  // from the last caption button to the border
constexpr int kButtonGap = 4;

// Where a skin has no picture: the column is dark in every skin, as its buttons' texts are light.
constexpr COLORREF kPlainColumn = RGB(16, 44, 65);

CSkinImage LoadPicture(const Look& look, const char* key, const char* file) {
    return CSkinImage::Load(look.skin.GetSkinImagePath(key, file));
}

void Stretch(const CSkinImage& picture, HDC dc, const RECT& place) {
    picture.DrawPart(dc, place, {0, 0, picture.Width(), picture.Height()});
}

}  // namespace

WindowFrame::WindowFrame(const Look& look)
    : m_look(look),
      m_topLeft(LoadPicture(look, "MAIN_TOP_LEFT", "top_left.png")),
      m_top(LoadPicture(look, "MAIN_TOP", "top.png")),
      m_topRight(LoadPicture(look, "MAIN_TOP_RIGHT", "top_right.png")),
      m_topTitle(LoadPicture(look, "MAIN_TOP_TITLE", "top_title.png")),
      m_left(LoadPicture(look, "MAIN_LEFT", "left.png")),
      m_right(LoadPicture(look, "MAIN_RIGHT", "right.png")),
      m_rightCenter(LoadPicture(look, "MAIN_RIGHT_CENTER", "right_center.png")),
      m_menu(LoadPicture(look, "MAIN_MENU", "menu.png")),
      m_bottomLeft(LoadPicture(look, "MAIN_BOTTOM_LEFT", "bottom_left.png")),
      m_bottom(LoadPicture(look, "MAIN_BOTTOM", "bottom.png")),
      m_bottomRight(LoadPicture(look, "MAIN_BOTTOM_RIGHT", "bottom_right.png")) {}

void WindowFrame::CreateButtons(HWND window, const Language& language) {
    m_help.Create(window, kButtonHelp, language.GetText(1040, "Help"), IDC_CAPTION_HELP, m_look);
    m_about.Create(window, kButtonAbout, language.GetText(52, "About"), IDC_CAPTION_ABOUT, m_look);
    m_minimise.Create(window, kButtonMin, language.GetText(1041, "Minimise"), IDC_CAPTION_MINIMISE, m_look);
    m_maximise.Create(window, kButtonMax, language.GetText(1042, "Maximise"), IDC_CAPTION_MAXIMISE, m_look);
    m_close.Create(window, kButtonClose, language.GetText(1043, "Close"), IDC_CAPTION_CLOSE, m_look);
}

void WindowFrame::PlaceButtons(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    const RECT band = CaptionPlace(client);
    LONG right = band.right - Scale(kButtonMargin);
    CButton* const fromTheRight[] = {&m_close, &m_maximise, &m_minimise, &m_about, &m_help};
    for (CButton* button : fromTheRight) {
        const SIZE size = button->Size();
        const LONG top = (band.top + band.bottom - size.cy) / 2;
        button->MoveTo(right - size.cx, top);
        right -= size.cx + Scale(kButtonGap);
    }
}

RECT WindowFrame::CaptionPlace(const RECT& client) {
    return {client.left, client.top, client.right, client.top + Scale(kCaptionHeight)};
}

RECT WindowFrame::ColumnPlace(const RECT& client) {
    return {client.left, client.top + Scale(kCaptionHeight), client.left + Scale(kColumnWidth),
            client.bottom - Scale(kStatusHeight)};
}

RECT WindowFrame::StatusPlace(const RECT& client) {
    return {client.left + Scale(kColumnWidth), client.bottom - Scale(kStatusHeight), client.right - Scale(kEdge),
            client.bottom};
}

RECT WindowFrame::PagePlace(const RECT& client) {
    return {client.left + Scale(kColumnWidth), client.top + Scale(kCaptionHeight), client.right - Scale(kEdge),
            client.bottom - Scale(kStatusHeight)};
}

void WindowFrame::Paint(HDC dc, const RECT& client, const std::string& title, bool isMaximised) const {
    // Most calls come from a child control that wants the ground behind itself, and nothing else.
    const auto isWanted = [dc](const RECT& place) { return ::RectVisible(dc, &place) != FALSE; };
    const RECT caption = CaptionPlace(client);
    const RECT status{client.left, StatusPlace(client).top, client.right, client.bottom};
    const RECT page = PagePlace(client);
    // A skin's pictures may let something through, which must not be what was painted the last time.
    for (const RECT& place : {page, caption, ColumnPlace(client), status}) {
        if (isWanted(place)) FillSolid(dc, place, m_look.colours.page);
    }
    if (isWanted(caption)) PaintCaption(dc, caption, title);
    if (isWanted(ColumnPlace(client))) PaintColumn(dc, client);
    if (isWanted(status)) PaintStatus(dc, client);
    if (!isMaximised) PaintEdges(dc, client);
}

void WindowFrame::PaintCaption(HDC dc, const RECT& band, const std::string& title) const {
    if (m_top) {
        const LONG left = band.left + Scale(m_topLeft.Width());
        const LONG right = band.right - Scale(m_topRight.Width());
        Stretch(m_topLeft, dc, {band.left, band.top, left, band.bottom});
        Stretch(m_top, dc, {left, band.top, right, band.bottom});
        Stretch(m_topRight, dc, {right, band.top, band.right, band.bottom});
    } else {
        FillSolid(dc, band, m_look.colours.page);
        FillSolid(dc, {band.left, band.bottom - 1, band.right, band.bottom}, m_look.colours.frame2);
    }
    LONG textLeft = band.left + Scale(kTitleLeft);
    if (m_topTitle) {
        const LONG right = textLeft + Scale(m_topTitle.Width());
        Stretch(m_topTitle, dc, {textLeft, band.top, right, band.bottom});
        textLeft = right + Scale(kTitleTextGap);
    }
    // The skin's colour is made for the band of its picture.
    DrawLabel(dc, m_look.fonts.Title(), {textLeft, band.top, band.right, band.bottom}, title,
              m_top ? m_look.colours.captionText : m_look.colours.text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void WindowFrame::PaintColumn(HDC dc, const RECT& client) const {
    const RECT column = ColumnPlace(client);
    if (m_menu) {
        Stretch(m_menu, dc, column);
    } else {
        FillSolid(dc, column, kPlainColumn);
    }
}

void WindowFrame::PaintStatus(HDC dc, const RECT& client) const {
    const RECT band = StatusPlace(client);
    const RECT leftEnd{client.left, band.top, band.left, band.bottom};
    if (m_bottomLeft) {
        Stretch(m_bottomLeft, dc, leftEnd);
    } else {
        FillSolid(dc, leftEnd, kPlainColumn);
    }
    const LONG right = client.right - Scale(m_bottomRight.Width());
    if (m_bottom) {
        Stretch(m_bottom, dc, {band.left, band.top, right, band.bottom});
    } else {
        FillSolid(dc, {band.left, band.top, client.right, band.bottom}, m_look.colours.page);
        FillSolid(dc, {band.left, band.top, client.right, band.top + 1}, m_look.colours.frame2);
    }
    Stretch(m_bottomRight, dc, {right, band.top, client.right, band.bottom});
}

void WindowFrame::PaintEdges(HDC dc, const RECT& client) const {
    const int edge = Scale(kEdge);
    const RECT sides{client.left, client.top + Scale(kCaptionHeight), client.right,
                     client.bottom - Scale(kStatusHeight)};
    if (!m_left || !m_right) {
        DrawFrame(dc, client, m_look.colours.frame1);
        return;
    }
    Stretch(m_left, dc, {sides.left, sides.top, sides.left + edge, sides.bottom});
    const RECT right{sides.right - edge, sides.top, sides.right, sides.bottom};
    Stretch(m_right, dc, right);
    Stretch(m_rightCenter, dc, Centred(right, {edge, Scale(m_rightCenter.Height())}));
}

}  // namespace brennvar
