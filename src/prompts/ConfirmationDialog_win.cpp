#include "prompts/ConfirmationDialog_win.h"

#include <string_view>

#include "ui/Controls.h"
#include "ui/ProgramIcon.h"
#include "ui/ResourceIds.h"
#include "ui/WorkArea.h"

namespace brennvar {
namespace {

// The layout, at 96 pixels per inch.
constexpr int kWidth = 448;
constexpr int kMargin = 16;
constexpr int kIconSize = 32;
constexpr int kTextLeft = kMargin + kIconSize + kMargin;
constexpr int kTextWidth = kWidth - kTextLeft - kMargin;
constexpr int kNameTop = 16;
constexpr int kNameHeight = 24;
constexpr int kHostTop = 40;
constexpr int kServiceTop = 60;
constexpr int kLineHeight = 20;
constexpr int kDetailsTop = 96;
constexpr int kLabelWidth = 112;
constexpr int kAskGap = 12;  // between the table and the final question
constexpr int kDetailsHeight = 5 * kLineHeight + kAskGap + kLineHeight;
constexpr int kRememberTop = kDetailsTop + kDetailsHeight + 8;
constexpr int kRememberHeight = 56;
constexpr int kButtonTop = kRememberTop + kRememberHeight + 16;
constexpr int kButtonWidth = 104;
constexpr int kButtonHeight = 32;
constexpr int kButtonGap = 8;
constexpr int kHeight = kButtonTop + kButtonHeight + kMargin;
// From the corner of the work area.
constexpr int kScreenMargin = 16;

void DrawLine(HDC dc, HFONT font, const RECT& place, std::string_view text, UINT format) {
    const HGDIOBJ old = ::SelectObject(dc, font);
    RECT box = place;
    ::DrawTextA(dc, text.data(), static_cast<int>(text.size()), &box,
                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | format);
    ::SelectObject(dc, old);
}

}  // namespace

ConfirmationDialog::ConfirmationDialog(const CFonts& fonts, const PromptQuestion& question)
    : m_fonts(fonts), m_question(question) {}

PromptAnswer ConfirmationDialog::Ask(HWND owner) {
    INT_PTR result = DoModal(owner, IDD_CONFIRMATION, Appearance::Unfocused);
    if (result != IDYES) result = IDNO;  // a window that could not be shown allows nothing
    return AnswerOfDialog(static_cast<int>(result), m_remember);
}

void ConfirmationDialog::OnInitDialog() {
    static_assert(kDialogResultNo == IDNO);
    ::SetWindowTextA(Window(), m_question.caption.c_str());
    const struct {
        int id;
        std::string text;
        HFONT font;
    } controls[] = {
        {IDC_PROGRAM_NAME, m_question.displayName, m_fonts.Title()},
        {IDC_HOST, m_question.wantsText + " " + m_question.remoteHost, m_fonts.Text()},
        {IDC_SERVICE, m_question.serviceLabel + " " + m_question.service, m_fonts.Text()},
        {IDC_MESSAGE_TEXT, m_question.body, m_fonts.Text()},
        {IDC_REMEMBER, m_question.rememberText, m_fonts.Text()},
        {IDC_ALLOW, m_question.allowButton, m_fonts.Text()},
        {IDC_DENY, m_question.denyButton, m_fonts.Text()},
    };
    for (const auto& control : controls) {
        ::SetDlgItemTextA(Window(), control.id, control.text.c_str());
        SetControlFont(Item(control.id), control.font);
    }
    m_icon = LoadIconOfProgram(m_question.applicationKnown ? m_question.path : "", IconSize::Large);
    ::SendDlgItemMessageA(Window(), IDC_PROGRAM_ICON, STM_SETICON, reinterpret_cast<WPARAM>(m_icon.Get()), 0);
    PlaceControls();
    SetButtonsEnabled(false);
    ::SetTimer(Window(), kButtonTimer, kButtonDelay, nullptr);
}

void ConfirmationDialog::PlaceControls() {
    const auto place = [this](int id, int left, int top, int width, int height) {
        ::SetWindowPos(Item(id), nullptr, Scale(left), Scale(top), Scale(width), Scale(height),
                       SWP_NOZORDER | SWP_NOACTIVATE);
    };
    place(IDC_PROGRAM_ICON, kMargin, kMargin, kIconSize, kIconSize);
    place(IDC_PROGRAM_NAME, kTextLeft, kNameTop, kTextWidth, kNameHeight);
    place(IDC_HOST, kTextLeft, kHostTop, kTextWidth, kLineHeight);
    place(IDC_SERVICE, kTextLeft, kServiceTop, kTextWidth, kLineHeight);
    place(IDC_MESSAGE_TEXT, kTextLeft, kDetailsTop, kTextWidth, kDetailsHeight);
    place(IDC_REMEMBER, kTextLeft, kRememberTop, kTextWidth, kRememberHeight);
    const int denyLeft = kWidth - kMargin - kButtonWidth;
    place(IDC_ALLOW, denyLeft - kButtonGap - kButtonWidth, kButtonTop, kButtonWidth, kButtonHeight);
    place(IDC_DENY, denyLeft, kButtonTop, kButtonWidth, kButtonHeight);

    // In the corner where notices appear, away from what the user is working on.
    RECT frame{0, 0, Scale(kWidth), Scale(kHeight)};
    ::AdjustWindowRectEx(&frame, static_cast<DWORD>(::GetWindowLongPtrA(Window(), GWL_STYLE)), FALSE,
                         static_cast<DWORD>(::GetWindowLongPtrA(Window(), GWL_EXSTYLE)));
    const LONG width = frame.right - frame.left;
    const LONG height = frame.bottom - frame.top;
    const RECT area = MainWorkArea();
    const LONG right = area.right - Scale(kScreenMargin);
    const LONG bottom = area.bottom - Scale(kScreenMargin);
    const RECT window = FitInto({right - width, bottom - height, right, bottom}, area);
    ::SetWindowPos(Window(), nullptr, window.left, window.top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ConfirmationDialog::SetButtonsEnabled(bool enabled) {
    m_buttonsWork = enabled;
    ::EnableWindow(Item(IDC_ALLOW), enabled);
    ::EnableWindow(Item(IDC_DENY), enabled);
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
    ::FillRect(item.hDC, &item.rcItem, ::GetSysColorBrush(COLOR_3DFACE));
    ::SetBkMode(item.hDC, TRANSPARENT);
    ::SetTextColor(item.hDC, ::GetSysColor(COLOR_BTNTEXT));
    const int lineHeight = Scale(kLineHeight);
    RECT line = item.rcItem;
    line.bottom = line.top + lineHeight;
    DrawLine(item.hDC, m_fonts.Bold(), line, m_question.detailsTitle, DT_END_ELLIPSIS);
    const struct {
        std::string label;
        const std::string& value;
        UINT format;
    } rows[] = {
        {m_question.remoteLabel, m_question.remoteAddress, DT_END_ELLIPSIS},
        {m_question.protocolLabel, m_question.protocol, DT_END_ELLIPSIS},
        {m_question.programLabel, m_question.path, DT_PATH_ELLIPSIS | DT_END_ELLIPSIS},
        {m_question.adviceLabel, m_question.advice, DT_END_ELLIPSIS},
    };
    for (const auto& row : rows) {
        ::OffsetRect(&line, 0, lineHeight);
        RECT label = line;
        label.right = label.left + Scale(kLabelWidth);
        RECT value = line;
        value.left = label.right;
        DrawLine(item.hDC, m_fonts.Text(), label, row.label, DT_END_ELLIPSIS);
        DrawLine(item.hDC, m_fonts.Text(), value, row.value, row.format);
    }
    ::OffsetRect(&line, 0, lineHeight + Scale(kAskGap));
    DrawLine(item.hDC, m_fonts.Bold(), line, m_question.askText, DT_END_ELLIPSIS);
}

}  // namespace brennvar
