#include "prompts/ConfirmationDialog_win.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "config/ResourceIds.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"
#include "ui/SmoothDc_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// The layout, at 96 pixels per inch, from the content's corner.
constexpr int kWidth = 432;
constexpr int kIconSize = 32;
constexpr int kTextLeft = 48;
constexpr int kLineHeight = 20;
constexpr int kFactHeight = 24;  // what decides is larger
constexpr int kNameTop = 0;
constexpr int kPathTop = kNameTop + kFactHeight;
constexpr int kWantsTop = kPathTop + kLineHeight + 8;
constexpr int kHostTop = kWantsTop + kLineHeight;
constexpr int kServiceTop = kHostTop + kFactHeight;
constexpr int kCardTop = kServiceTop + kLineHeight + 12;
constexpr int kCardPadding = 12;
constexpr int kRowHeight = 24;
constexpr int kRowCount = 4;
constexpr int kCardHeight = kRowCount * kRowHeight + 2 * kCardPadding;
constexpr int kAskGap = 12;
constexpr int kMessageHeight = kCardHeight + kAskGap + kLineHeight;
constexpr int kRememberTop = kCardTop + kMessageHeight + 8;
constexpr int kButtonsGap = 16;  // above the buttons
constexpr int kButtonGap = 8;    // between them
constexpr int kLabelGap = 16;
// From the corner of the work area.
constexpr int kScreenMargin = 16;

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
void DrawPill(HDC dc, const RECT& place, PromptAdvice kind, COLORREF colour) {
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

ConfirmationDialog::ConfirmationDialog(const CFonts& fonts, const PromptQuestion& question)
    : CSkinDialog(fonts), m_question(question) {}

PromptAnswer ConfirmationDialog::Ask(HWND owner) {
    INT_PTR result = DoModal(owner, IDD_CONFIRMATION, Appearance::Unfocused);
    if (result != IDYES) result = IDNO;  // a window that could not be shown allows nothing
    return AnswerOfDialog(static_cast<int>(result), m_remember);
}

void ConfirmationDialog::OnInitDialog() {
    CSkinDialog::OnInitDialog();
    SetButtonsEnabled(false);
    ::SetTimer(Window(), kButtonTimer, kButtonDelay, nullptr);
}

void ConfirmationDialog::OnCreateContent() {
    static_assert(kDialogResultNo == IDNO);
    ::SetWindowTextA(Window(), m_question.caption.c_str());
    m_icon = LoadIconOfProgram(m_question.applicationKnown ? m_question.path : "", IconSize::Large);
    AdoptControls();
    PlaceControls();
}

void ConfirmationDialog::AdoptControls() {
    const struct {
        int id;
        std::string text;
    } texts[] = {
        {IDC_PROGRAM_NAME, m_question.displayName},
        {IDC_PROGRAM_PATH, m_question.path},
        {IDC_WANTS, m_question.wantsText},
        {IDC_HOST, m_question.remoteHost},
        {IDC_SERVICE, m_question.serviceLabel + " " + m_question.service},
        {IDC_MESSAGE_TEXT, m_question.body},
        {IDC_REMEMBER, m_question.rememberText},
        {IDC_ALLOW, m_question.allowButton},
        {IDC_DENY, m_question.denyButton},
    };
    for (const auto& control : texts) ::SetDlgItemTextA(Window(), control.id, control.text.c_str());
    m_name.Adopt(Item(IDC_PROGRAM_NAME), LabelKind::Title, GetLook());
    m_path.Adopt(Item(IDC_PROGRAM_PATH), LabelKind::Quiet, GetLook());
    m_wants.Adopt(Item(IDC_WANTS), LabelKind::Quiet, GetLook());
    m_host.Adopt(Item(IDC_HOST), LabelKind::Title, GetLook());
    m_service.Adopt(Item(IDC_SERVICE), LabelKind::Plain, GetLook());
    m_rememberBox.Adopt(Item(IDC_REMEMBER), GetLook());
    m_allow.Adopt(Item(IDC_ALLOW), kButtonDialog, GetLook());
    m_deny.Adopt(Item(IDC_DENY), kButtonDialog, GetLook());
}

void ConfirmationDialog::PlaceControls() {
    const int rememberHeight = m_rememberBox.HeightAt(Scale(kWidth));
    const int buttonTop = Scale(kRememberTop) + rememberHeight + Scale(kButtonsGap);
    SetContentPixels({Scale(kWidth), buttonTop + m_allow.Size().cy});
    const RECT content = ContentRect();
    const auto at = [&](int left, int top, int height) {
        return RECT{content.left + Scale(left), content.top + Scale(top), content.right,
                    content.top + Scale(top + height)};
    };
    m_name.Place(at(kTextLeft, kNameTop, kFactHeight));
    m_path.Place(at(kTextLeft, kPathTop, kLineHeight));
    m_wants.Place(at(kTextLeft, kWantsTop, kLineHeight));
    m_host.Place(at(kTextLeft, kHostTop, kFactHeight));
    m_service.Place(at(kTextLeft, kServiceTop, kLineHeight));
    // From below: a window that had to be cut to the work area cuts a text and not its buttons.
    const LONG buttons = content.bottom - m_allow.Size().cy;
    RECT remember = at(0, kRememberTop, 0);
    remember.bottom = std::min<LONG>(remember.top + rememberHeight, buttons - Scale(kButtonsGap));
    m_rememberBox.Place(remember);
    const RECT message = at(0, kCardTop, kMessageHeight);
    ::SetWindowPos(Item(IDC_MESSAGE_TEXT), nullptr, message.left, message.top, WidthOf(message), HeightOf(message),
                   SWP_NOZORDER | SWP_NOACTIVATE);
    const LONG denyLeft = content.right - m_deny.Size().cx;
    m_deny.MoveTo(denyLeft, buttons);
    m_allow.MoveTo(denyLeft - Scale(kButtonGap) - m_allow.Size().cx, buttons);
}

RECT ConfirmationDialog::OpeningPlace(SIZE size) const {
    // In the corner where notices appear, away from what the user is working on.
    const RECT area = MainWorkArea();
    const LONG right = area.right - Scale(kScreenMargin);
    const LONG bottom = area.bottom - Scale(kScreenMargin);
    return FitInto({right - size.cx, bottom - size.cy, right, bottom}, area);
}

void ConfirmationDialog::OnPaintGround(HDC dc) {
    const RECT content = ContentRect();
    ::DrawIconEx(dc, content.left, content.top + Scale(kNameTop + 4), m_icon.Get(), Scale(kIconSize),
                 Scale(kIconSize), 0, nullptr, DI_NORMAL);
}

void ConfirmationDialog::SetButtonsEnabled(bool enabled) {
    m_buttonsWork = enabled;
    for (const int id : {IDC_ALLOW, IDC_DENY, IDCANCEL}) ::EnableWindow(Item(id), enabled);
}

void ConfirmationDialog::OnTimer(UINT_PTR id) {
    if (id != kButtonTimer) return;
    ::KillTimer(Window(), kButtonTimer);
    SetButtonsEnabled(true);
}

void ConfirmationDialog::OnCommand(int id, int notification) {
    if (notification != BN_CLICKED) return;
    if (id == IDC_ALLOW) Answer(IDYES);
    if (id == IDC_DENY) Answer(IDNO);
}

void ConfirmationDialog::Answer(int result) {
    // A command may be posted by anybody; it counts as little as a click on a disabled button.
    if (!m_buttonsWork) return;
    m_remember = ::IsDlgButtonChecked(Window(), IDC_REMEMBER) == BST_CHECKED;
    End(result);
}

void ConfirmationDialog::OnCancel() {
    if (m_buttonsWork) End(IDNO);
}

void ConfirmationDialog::OnDrawItem(const DRAWITEMSTRUCT& item) {
    if (item.CtlID != IDC_MESSAGE_TEXT) return;
    const CBufferedDc buffer(item.hDC, item.rcItem);
    PaintParentGround(item.hwndItem, buffer.Dc());
    RECT card = item.rcItem;
    card.bottom = card.top + Scale(kCardHeight);
    FillSolid(buffer.Dc(), card, GetLook().colours.list);
    DrawFrame(buffer.Dc(), card, GetLook().colours.frame2);
    PaintTable(buffer.Dc(), Inset(card, Scale(kCardPadding)));
    const RECT ask{item.rcItem.left, card.bottom + Scale(kAskGap), item.rcItem.right, item.rcItem.bottom};
    DrawLabel(buffer.Dc(), GetLook().fonts.Bold(), ask, m_question.askText, GetLook().colours.text, kLineFormat);
}

void ConfirmationDialog::PaintTable(HDC dc, const RECT& card) const {
    const Palette& colours = GetLook().colours;
    const HFONT font = GetLook().fonts.Text();
    RECT row = card;
    row.bottom = row.top + Scale(kRowHeight);
    DrawLabel(dc, GetLook().fonts.Bold(), row, m_question.detailsTitle, colours.text, kLineFormat);
    const struct {
        const std::string& label;
        const std::string* value;  // null: the advice
    } rows[] = {{m_question.remoteLabel, &m_question.remoteAddress},
                {m_question.protocolLabel, &m_question.protocol},
                {m_question.adviceLabel, nullptr}};
    LONG labelWidth = 0;
    for (const auto& [label, value] : rows) {
        labelWidth = std::max(labelWidth, MeasureText(Window(), font, label, 0).cx);
    }
    labelWidth = std::min<LONG>(labelWidth + Scale(kLabelGap), WidthOf(card) / 2);
    for (const auto& [label, value] : rows) {
        ::OffsetRect(&row, 0, Scale(kRowHeight));
        RECT place = row;
        place.right = row.left + labelWidth;
        DrawLabel(dc, font, place, label, colours.quietText, kLineFormat);
        place = {row.left + labelWidth, row.top, row.right, row.bottom};
        if (value) {
            DrawLabel(dc, font, place, *value, colours.text, kLineFormat);
        } else {
            PaintAdvice(dc, place);
        }
    }
}

void ConfirmationDialog::PaintAdvice(HDC dc, const RECT& place) const {
    const PromptAdvice kind = m_question.adviceKind;
    const COLORREF colour = kind == PromptAdvice::Allow  ? kAllowColour
                            : kind == PromptAdvice::Deny ? kDenyColour
                                                         : kNoAdviceColour;
    const HFONT font = GetLook().fonts.Bold();
    const int textLeft = Scale(kDotInset) + Scale(kDotSize) + Scale(kPillGap);
    const int textWidth = MeasureText(Window(), font, m_question.advice, 0).cx;
    const int width = std::min(WidthOf(place), textLeft + textWidth + 2 * Scale(kPillGap));
    const int height = Scale(kPillHeight);
    const LONG top = place.top + (HeightOf(place) - height) / 2;
    const RECT pill{place.left, top, place.left + width, top + height};
    DrawPill(dc, pill, kind, colour);
    DrawLabel(dc, font, {pill.left + textLeft, pill.top, pill.right, pill.bottom}, m_question.advice, kPillText,
              kLineFormat);
}

}  // namespace brennvar
