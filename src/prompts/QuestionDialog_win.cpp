#include "prompts/QuestionDialog_win.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "base/DisplayName.h"
#include "config/ResourceIds.h"
#include "prompts/QuestionIcon_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

// The layout, at 96 pixels per inch, from the content's corner.
constexpr int kWidth = 432;
constexpr int kIconSize = 32;
constexpr int kIconTop = 4;
constexpr int kTextLeft = 48;
constexpr int kLineHeight = 20;
constexpr int kFactHeight = 24;  // what decides is larger
constexpr int kHeadingGap = 12;
constexpr int kCardPadding = 12;
constexpr int kRowHeight = 24;
constexpr int kAskGap = 12;
constexpr int kTickGap = 8;      // above the box
constexpr int kTickIndent = 24;  // where the text beside the box begins
constexpr int kButtonsGap = 16;  // above the buttons
constexpr int kButtonGap = 8;    // between them
constexpr int kLabelGap = 16;
constexpr int kLinkGap = 12;  // left of the link
// The advice: a light pill with a dot, a shape and a word. Its colours are the same in every skin.
constexpr COLORREF kAllowColour = RGB(46, 158, 91);
constexpr COLORREF kDenyColour = RGB(165, 14, 44);
constexpr COLORREF kNoAdviceColour = RGB(86, 101, 115);
constexpr COLORREF kPillText = RGB(27, 39, 51);
constexpr int kPillTint = 36;  // of 255, from white
constexpr int kPillHeight = 20;
constexpr int kDotSize = 14;
constexpr int kDotInset = 3;
constexpr int kPillGap = 6;

constexpr UINT kLineFormat = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;

COLORREF ColourOf(PromptAdvice kind) {
    switch (kind) {
        case PromptAdvice::Allow: return kAllowColour;
        case PromptAdvice::Deny: return kDenyColour;
        case PromptAdvice::None: break;
    }
    return kNoAdviceColour;
}

// A tick, a cross, or a line, in a square whose corner and side are in the units of the drawing.
void DrawMark(const CSmoothDc& smooth, PromptAdvice kind, int corner, int side) {
    // In a square of 14 units.
    const auto line = [&](std::initializer_list<POINT> points) {
        std::vector<POINT> scaled;
        for (const POINT& point : points) {
            scaled.push_back(
                {corner + ::MulDiv(point.x, side, kDotSize), corner + ::MulDiv(point.y, side, kDotSize)});
        }
        smooth.DrawLines(scaled.data(), static_cast<int>(scaled.size()), side / 8, RGB(255, 255, 255));
    };
    switch (kind) {
        case PromptAdvice::Allow: line({{4, 7}, {6, 10}, {10, 4}}); break;
        case PromptAdvice::Deny:
            line({{4, 4}, {10, 10}});
            line({{10, 4}, {4, 10}});
            break;
        case PromptAdvice::None: line({{4, 7}, {10, 7}}); break;
    }
}

// The pill with the dot at its left end.
void DrawPill(HDC dc, const RECT& place, PromptAdvice kind) {
    const COLORREF colour = ColourOf(kind);
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    constexpr int kUnit = CSmoothDc::kFactor;
    const int corner = Scale(kDotInset) * kUnit;
    const int side = Scale(kDotSize) * kUnit;
    smooth.FillPill({0, 0, WidthOf(place) * kUnit, HeightOf(place) * kUnit},
                    MixColours(RGB(255, 255, 255), colour, kPillTint));
    smooth.FillDisc({corner, corner, corner + side, corner + side}, colour);
    DrawMark(smooth, kind, corner, side);
}

}  // namespace

QuestionDialog::QuestionDialog(const CFonts& fonts, Content content)
    : CSkinDialog(fonts), m_content(std::move(content)) {}

PromptAnswer QuestionDialog::Ask(HWND owner) {
    m_owner = owner;
    const bool isAllowed = DoModal(owner, IDD_CONFIRMATION, Appearance::Unfocused) == IDYES;
    return {.allow = isAllowed, .remember = m_isTicked};
}

void QuestionDialog::Open(HWND owner, std::function<void()> answered) {
    m_owner = owner;
    m_answered = std::move(answered);
    (void)CDialog::Open(owner, IDD_CONFIRMATION, Appearance::Unfocused);
}

std::optional<PromptAnswer> QuestionDialog::Given() const {
    if (IsOpen()) return std::nullopt;
    return PromptAnswer{.allow = Result() == IDYES, .remember = m_isTicked};
}

void QuestionDialog::OnEnded() {
    if (m_answered) m_answered();
}

void QuestionDialog::OnInitDialog() {
    CSkinDialog::OnInitDialog();
    KeepTexts();
    m_stand.Begin(Window(), m_owner, {IDC_ALLOW, IDC_DENY, IDCANCEL, IDC_QUESTION_LINK});
}

void QuestionDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_content.caption.c_str());
    m_tips.Begin(Window(), GetLook());
    if (!m_content.icon || !m_content.icon->icon) m_plainIcon = LoadNoIcon(IconSize::Large);
    AdoptControls();
    PlaceControls();
}

void QuestionDialog::AdoptControls() {
    for (const Heading& line : m_content.heading) {
        ::SetDlgItemTextA(Window(), line.id, line.text.c_str());
        m_heading.emplace_back().Adopt(Item(line.id), line.kind, GetLook());
        ::ShowWindow(Item(line.id), SW_SHOWNA);  // the template has lines that not every question needs
    }
    ::SetDlgItemTextA(Window(), IDC_QUESTION_LINK, m_content.linkText.c_str());
    ::SetDlgItemTextA(Window(), IDC_MESSAGE_TEXT, m_content.message.c_str());
    m_message.Adopt(Item(IDC_MESSAGE_TEXT), GetLook());
    ::SetDlgItemTextA(Window(), IDC_REMEMBER, m_content.tickText.c_str());
    ::SetDlgItemTextA(Window(), IDC_WHY_NOT_REMEMBERED, m_content.whyNoTick.c_str());
    ::SetDlgItemTextA(Window(), IDC_ALLOW, m_content.allowText.c_str());
    ::SetDlgItemTextA(Window(), IDC_DENY, m_content.denyText.c_str());
    m_link.Adopt(Item(IDC_QUESTION_LINK), GetLook());
    ::ShowWindow(m_link.Window(), m_content.linkText.empty() ? SW_HIDE : SW_SHOWNA);
    m_tickBox.Adopt(Item(IDC_REMEMBER), GetLook());
    ::EnableWindow(m_tickBox.Window(), m_content.whyNoTick.empty());
    m_whyNoTick.Adopt(Item(IDC_WHY_NOT_REMEMBERED), LabelKind::Quiet, GetLook());
    ::ShowWindow(m_whyNoTick.Window(), m_content.whyNoTick.empty() ? SW_HIDE : SW_SHOWNA);
    m_allow.Adopt(Item(IDC_ALLOW), kButtonDialog, GetLook());
    m_deny.Adopt(Item(IDC_DENY), kButtonDialog, GetLook());
}

int QuestionDialog::PlaceHeading(bool measuresOnly) {
    const RECT content = ContentRect();
    LONG top = content.top;
    for (std::size_t index = 0; index < m_content.heading.size(); ++index) {
        const Heading& line = m_content.heading[index];
        const int height = Scale(line.kind == LabelKind::Title ? kFactHeight : kLineHeight);
        if (!measuresOnly) {
            RECT place{content.left + Scale(kTextLeft), top, content.right, top + height};
            if (index + 1 == m_content.heading.size() && !m_content.linkText.empty()) {
                m_link.Place({place.right - m_link.Width(), place.top, place.right, place.bottom});
                place.right -= m_link.Width() + Scale(kLinkGap);
            }
            m_heading[index].Place(place);
            FitHeading(line, place);
        }
        top += height + Scale(line.gapBelow);
    }
    return static_cast<int>(top - content.top);
}

void QuestionDialog::FitHeading(const Heading& line, const RECT& place) {
    const HFONT font = line.kind == LabelKind::Title ? GetLook().fonts.Title() : GetLook().fonts.Text();
    const auto fits = [&](const std::string& text) {
        return MeasureText(font, text, 0, DT_NOPREFIX).cx <= WidthOf(place);
    };
    if (fits(line.text)) return;
    m_tips.Add(place, line.text);
    if (line.showsEnd) ::SetDlgItemTextA(Window(), line.id, EndThatFits(line.text, fits).c_str());
}

int QuestionDialog::CardHeight() const {
    if (m_content.tableTitle.empty()) return 0;
    const auto lines = 1 + static_cast<int>(m_content.rows.size());
    return Scale(lines * kRowHeight + 2 * kCardPadding);
}

void QuestionDialog::PlaceControls() {
    const int width = Scale(kWidth);
    const int messageTop = PlaceHeading(true) + Scale(kHeadingGap);
    const int askTop = CardHeight() == 0 ? 0 : CardHeight() + Scale(kAskGap);
    const int messageHeight = askTop + Scale(kLineHeight);
    const int tickTop = messageTop + messageHeight + Scale(kTickGap);
    const int tickHeight = m_tickBox.HeightAt(width);
    const int whyHeight =
        m_content.whyNoTick.empty() ? 0 : static_cast<int>(m_whyNoTick.Measure(width - Scale(kTickIndent)).cy);
    SetContentPixels({width, tickTop + tickHeight + whyHeight + Scale(kButtonsGap) + m_allow.Size().cy});
    (void)PlaceHeading(false);
    const RECT content = ContentRect();
    ::SetWindowPos(Item(IDC_MESSAGE_TEXT), nullptr, content.left, content.top + messageTop, WidthOf(content),
                   messageHeight, SWP_NOZORDER | SWP_NOACTIVATE);
    // From below: a window that had to be cut to the work area cuts a text and not its buttons.
    const LONG buttons = content.bottom - m_allow.Size().cy;
    RECT tick{content.left, content.top + tickTop, content.right, 0};
    tick.bottom = std::min<LONG>(tick.top + tickHeight, buttons - Scale(kButtonsGap));
    m_tickBox.Place(tick);
    m_whyNoTick.Place({tick.left + Scale(kTickIndent), tick.bottom, tick.right, tick.bottom + whyHeight});
    const LONG denyLeft = content.right - m_deny.Size().cx;
    m_deny.MoveTo(denyLeft, buttons);
    m_allow.MoveTo(denyLeft - Scale(kButtonGap) - m_allow.Size().cx, buttons);
}

void QuestionDialog::OnPaintGround(HDC dc) {
    const RECT content = ContentRect();
    const HICON icon = m_plainIcon ? m_plainIcon.Get() : m_content.icon->icon.Get();
    ::DrawIconEx(dc, content.left, content.top + Scale(kIconTop), icon, Scale(kIconSize), Scale(kIconSize), 0,
                 nullptr, DI_NORMAL);
}

void QuestionDialog::OnCommand(int id, int notification) {
    if (notification != BN_CLICKED) return;
    if (id == IDC_ALLOW) Answer(IDYES);
    if (id == IDC_DENY) Answer(IDNO);
    if (id == IDC_QUESTION_LINK && m_stand.ButtonsWork()) OnLink(m_link.Window());
}

void QuestionDialog::Answer(int result) {
    if (!m_stand.ButtonsWork()) return;
    m_isTicked = m_content.whyNoTick.empty() && ::IsDlgButtonChecked(Window(), IDC_REMEMBER) == BST_CHECKED;
    End(result);
}

void QuestionDialog::OnCancel() {
    if (m_stand.ButtonsWork()) End(IDNO);
}

void QuestionDialog::OnTimer(UINT_PTR id) {
    m_stand.OnTimer(id);
    m_tips.OnTimer(id);
}

std::optional<LRESULT> QuestionDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    m_tips.OnMessage(message, lParam);
    return CSkinDialog::OnMessage(message, wParam, lParam);
}

void QuestionDialog::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID != IDC_MESSAGE_TEXT) return;
    const CBufferedDc buffer(item.hDC, item.rcItem);
    PaintParentGround(item.hwndItem, buffer.Dc());
    RECT ask = item.rcItem;
    if (CardHeight() != 0) {
        RECT card = item.rcItem;
        card.bottom = card.top + CardHeight();
        FillSolid(buffer.Dc(), card, GetLook().colours.list);
        DrawFrame(buffer.Dc(), card, GetLook().colours.frame2);
        PaintTable(buffer.Dc(), Inset(card, Scale(kCardPadding)));
        ask.top = card.bottom + Scale(kAskGap);
    }
    DrawLabel(buffer.Dc(), GetLook().fonts.Bold(), ask, m_content.askText, GetLook().colours.text, kLineFormat);
}

void QuestionDialog::PaintTable(HDC dc, const RECT& card) const {
    const Palette& colours = GetLook().colours;
    const HFONT font = GetLook().fonts.Text();
    RECT line = card;
    line.bottom = line.top + Scale(kRowHeight);
    DrawLabel(dc, GetLook().fonts.Bold(), line, m_content.tableTitle, colours.text, kLineFormat);
    LONG labelWidth = 0;
    for (const Row& row : m_content.rows) {
        labelWidth = std::max(labelWidth, MeasureText(font, row.label, 0).cx);
    }
    labelWidth = std::min<LONG>(labelWidth + Scale(kLabelGap), WidthOf(card) / 2);
    for (const Row& row : m_content.rows) {
        ::OffsetRect(&line, 0, Scale(kRowHeight));
        RECT place = line;
        place.right = line.left + labelWidth;
        DrawLabel(dc, font, place, row.label, colours.quietText, kLineFormat);
        place = {line.left + labelWidth, line.top, line.right, line.bottom};
        if (row.mark) {
            PaintPill(dc, place, row);
        } else {
            DrawLabel(dc, font, place, row.value, colours.text, kLineFormat);
        }
    }
}

void QuestionDialog::PaintPill(HDC dc, const RECT& place, const Row& row) const {
    const HFONT font = GetLook().fonts.Bold();
    const int textLeft = Scale(kDotInset) + Scale(kDotSize) + Scale(kPillGap);
    const int textWidth = MeasureText(font, row.value, 0).cx;
    const int width = std::min(WidthOf(place), textLeft + textWidth + 2 * Scale(kPillGap));
    const int height = Scale(kPillHeight);
    const LONG top = place.top + (HeightOf(place) - height) / 2;
    const RECT pill{place.left, top, place.left + width, top + height};
    DrawPill(dc, pill, *row.mark);
    DrawLabel(dc, font, {pill.left + textLeft, pill.top, pill.right, pill.bottom}, row.value, kPillText,
              kLineFormat);
}

}  // namespace brennvar
