#include "ui/Balloon_win.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "ui/ActionMark_win.h"
#include "ui/BalloonPlace.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kTimeoutTimer = 1;

// At 96 pixels per inch.
constexpr int kTextWidth = 320;  // at most
constexpr int kPadding = 12;
constexpr int kIconSize = 16;
constexpr int kGap = 8;
constexpr int kTitleGap = 4;
constexpr int kTip = 10;
constexpr int kCorner = 8;
constexpr int kCross = 16;
constexpr int kHotShare = 26;  // of the text's colour below the cross under the mouse, of 255

// Those of this thread that have been shown, the last one behind the others. They may be hidden by now.
thread_local std::vector<CBalloon*> s_shown;

// Paths can have no blank for longer than a line: they are broken anywhere then.
constexpr UINT kTextFormat = DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;

PixelBox BoxOf(const RECT& place) {
    return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
            static_cast<int>(place.bottom)};
}

// The outline of body and tip, in coordinates of the body's corner.
UniqueRegion Outline(const BalloonPlace& place, int length) {
    const LONG width = place.body.Width();
    const LONG height = place.body.Height();
    const LONG x = place.tip - place.body.left;
    const LONG y = place.tip - place.body.top;
    const LONG half = length;
    std::array<POINT, 3> tip{};
    switch (place.side) {
        case TipSide::Bottom:
            tip = {{{x - half, height - 1}, {x, height - 1 + length}, {x + half, height - 1}}};
            break;
        case TipSide::Top: tip = {{{x - half, 1}, {x, 1 - length}, {x + half, 1}}}; break;
        case TipSide::Right: tip = {{{width - 1, y - half}, {width - 1 + length, y}, {width - 1, y + half}}}; break;
        case TipSide::Left: tip = {{{1, y - half}, {1 - length, y}, {1, y + half}}}; break;
    }
    UniqueRegion region(::CreateRectRgn(0, 0, width, height));
    const UniqueRegion triangle(::CreatePolygonRgn(tip.data(), static_cast<int>(tip.size()), WINDING));
    ::CombineRgn(region.Get(), region.Get(), triangle.Get(), RGN_OR);
    return region;
}

}  // namespace

CBalloon::~CBalloon() {
    std::erase(s_shown, this);
}

bool CBalloon::CloseByKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE) return false;
    const HWND window = ::GetAncestor(message.hwnd, GA_ROOT);
    const auto found = std::find_if(s_shown.rbegin(), s_shown.rend(), [window](const CBalloon* balloon) {
        if (!balloon->IsShown()) return false;
        return window == balloon->Window() || window == ::GetAncestor(balloon->m_options.keyboard, GA_ROOT);
    });
    if (window == nullptr || found == s_shown.rend()) return false;
    (*found)->Hide();
    return true;
}

bool CBalloon::ShowFor(HWND control, const BalloonTexts& texts, BalloonOptions options) {
    RECT anchor{};
    ::GetWindowRect(control, &anchor);
    if (!options.keyboard) options.keyboard = control;
    return Show(texts, anchor, std::move(options));
}

bool CBalloon::Show(const BalloonTexts& texts, const RECT& anchor, BalloonOptions options) {
    if (!Window() && !Create({.parent = options.owner,
                              .text = "",
                              .style = WS_POPUP,
                              .extendedStyle = WS_EX_TOPMOST | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW,
                              .className = "BrennvarBalloon"})) {
        return false;
    }
    const bool saysMore = !IsShown() || texts.title != m_texts.title || texts.text != m_texts.text;
    std::erase(s_shown, this);
    s_shown.push_back(this);
    m_isCrossHot = false;
    m_texts = texts;
    m_options = std::move(options);
    m_look.emplace(m_fonts);
    m_ground = m_look->skin.GetSkinColor("COLOR_BALLOON", 255, 255, 255);
    ::SetWindowTextA(Window(), (texts.title + "\n" + texts.text).c_str());
    const SIZE size = LayOut();

    const int tip = Scale(kTip);
    const BalloonPlace place = PlaceBalloon(BoxOf(anchor),
                                            {.width = static_cast<int>(size.cx),
                                             .height = static_cast<int>(size.cy),
                                             .tipLength = tip,
                                             .corner = Scale(kCorner),
                                             .isBelow = m_options.isBelow},
                                            BoxOf(WorkAreaNear(anchor)));
    // The window is as large as the body and the tip together.
    const int left = place.side == TipSide::Left ? tip : 0;
    const int top = place.side == TipSide::Top ? tip : 0;
    const bool isUpright = place.side == TipSide::Top || place.side == TipSide::Bottom;
    MoveParts(left, top);
    UniqueRegion region = Outline(place, tip);
    ::OffsetRgn(region.Get(), left, top);
    // The window owns its region from here on.
    if (::SetWindowRgn(Window(), region.Get(), FALSE)) (void)region.Release();
    ::SetWindowPos(Window(), HWND_TOPMOST, place.body.left - left, place.body.top - top,
                   place.body.Width() + (isUpright ? 0 : tip), place.body.Height() + (isUpright ? tip : 0),
                   SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOCOPYBITS);
    Repaint();
    ::KillTimer(Window(), kTimeoutTimer);
    if (m_options.timeout.count() > 0) {
        ::SetTimer(Window(), kTimeoutTimer, static_cast<UINT>(m_options.timeout.count()), nullptr);
    }
    if (saysMore) Announce(EVENT_SYSTEM_ALERT);
    return true;
}

void CBalloon::Hide() {
    if (!Window()) return;
    ::KillTimer(Window(), kTimeoutTimer);
    ::ShowWindow(Window(), SW_HIDE);
}

SIZE CBalloon::LayOut() {
    const int padding = Scale(kPadding);
    const int iconWidth = m_options.icon ? Scale(kIconSize) + Scale(kGap) : 0;
    const int left = padding + iconWidth;
    int right = left;
    int top = padding;
    m_iconPlace = m_title = m_text = m_link = m_time = m_cross = RECT{};
    // Beside the first text: the cross, and before it the time of a title.
    const int crossRoom = Scale(kGap) + Scale(kCross);
    SIZE time{};
    if (!m_texts.title.empty() && !m_texts.time.empty()) time = MeasureText(m_look->fonts.Text(), m_texts.time, 0);
    const int timeRoom = time.cx > 0 ? Scale(kGap) + time.cx : 0;
    if (m_options.icon) m_iconPlace = {padding, padding, padding + Scale(kIconSize), padding + Scale(kIconSize)};
    const auto add = [&](RECT& part, HFONT font, const std::string& text, int gapBefore) {
        if (text.empty()) return;
        const bool isFirst = top == padding;
        if (!isFirst) top += gapBefore;
        const int beside = isFirst ? crossRoom + timeRoom : 0;
        const SIZE size = MeasureText(font, text, Scale(kTextWidth) - beside, kTextFormat);
        part = {left, top, left + size.cx, top + size.cy};
        right = std::max<int>(right, part.right + beside);
        top = part.bottom;
    };
    add(m_title, m_look->fonts.Bold(), m_texts.title, 0);
    add(m_text, m_look->fonts.Text(), m_texts.text, Scale(kTitleGap));
    if (!m_texts.link.empty()) m_linkFont = Underlined(m_look->fonts.Text());
    add(m_link, m_linkFont.Get(), m_texts.link, Scale(kGap));
    m_cross = {right - Scale(kCross), padding, right, padding + Scale(kCross)};
    if (timeRoom > 0) {
        const LONG timeRight = m_cross.left - Scale(kGap);
        m_time = {timeRight - time.cx, padding, timeRight, padding + std::max<LONG>(time.cy, HeightOf(m_cross))};
    }
    return {right + padding,
            std::max<int>({top, static_cast<int>(m_iconPlace.bottom), static_cast<int>(m_cross.bottom)}) + padding};
}

void CBalloon::MoveParts(int right, int down) {
    for (RECT* part : {&m_iconPlace, &m_title, &m_text, &m_link, &m_time, &m_cross})
        ::OffsetRect(part, right, down);
}

void CBalloon::OnPaint(HDC dc, const RECT&) {
    const Palette& colours = m_look->colours;
    FillSolid(dc, ClientRect(), m_ground);
    UniqueRegion region(::CreateRectRgn(0, 0, 0, 0));
    ::GetWindowRgn(Window(), region.Get());
    // The inner frame first: two pixels, of which the outer one is painted over.
    for (const auto& [colour, width] : {std::pair{colours.frame2, 2}, std::pair{colours.frame1, 1}}) {
        const UniqueBrush brush(::CreateSolidBrush(colour));
        ::FrameRgn(dc, region.Get(), brush.Get(), width, width);
    }
    if (m_options.icon) {
        ::DrawIconEx(dc, m_iconPlace.left, m_iconPlace.top, m_options.icon, WidthOf(m_iconPlace),
                     HeightOf(m_iconPlace), 0, nullptr, DI_NORMAL);
    }
    DrawLabel(dc, m_look->fonts.Bold(), m_title, m_texts.title, colours.text, kTextFormat);
    DrawLabel(dc, m_look->fonts.Text(), m_text, m_texts.text, colours.text, kTextFormat);
    if (!m_texts.link.empty()) DrawLabel(dc, m_linkFont.Get(), m_link, m_texts.link, colours.text, kTextFormat);
    DrawLabel(dc, m_look->fonts.Text(), m_time, m_texts.time, colours.quietText,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    PaintCross(dc);
}

void CBalloon::PaintCross(HDC dc) const {
    const Palette& colours = m_look->colours;
    if (m_isCrossHot) FillSolid(dc, m_cross, MixColours(m_ground, colours.text, kHotShare));
    DrawClosingCross(dc, m_cross, m_isCrossHot ? colours.text : colours.quietText);
}

void CBalloon::SetCrossHot(bool isHot) {
    if (std::exchange(m_isCrossHot, isHot) != isHot) Repaint(m_cross);
}

void CBalloon::OnTimer(UINT_PTR id) {
    if (id == kTimeoutTimer && IsShown()) Hide();
}

void CBalloon::OnLeftUp(POINT point, UINT) {
    // The callback may show this balloon again.
    const std::function<void()> open = IsOnLink(point) ? m_options.onLink : nullptr;
    Hide();
    if (open) open();
}

std::optional<LRESULT> CBalloon::OnMessage(UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
        case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
        case WM_SETCURSOR: {
            if (LOWORD(lParam) != HTCLIENT) return std::nullopt;
            POINT point{};
            ::GetCursorPos(&point);
            ::ScreenToClient(Window(), &point);
            ::SetCursor(::LoadCursorA(nullptr, IsOnLink(point) ? IDC_HAND : IDC_ARROW));
            return TRUE;
        }
        default: return std::nullopt;
    }
}

void CBalloon::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::Alert;
    thing.name = m_texts.title.empty() ? m_texts.text : m_texts.title;
    if (!m_texts.title.empty()) thing.description = m_texts.text;
    if (m_look) thing.font = m_look->fonts.Text();  // none before it is shown for the first time
}

}  // namespace brennvar
