#include "security/PasswordDialog_win.h"

#include <algorithm>
#include <array>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/Questions_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 376;
constexpr int kHeadingGap = 12;  // below the heading
constexpr int kLabelGap = 4;     // between a label and its field
constexpr int kFieldGap = 12;    // below a field
constexpr int kButtonTop = 12;   // more, above the buttons
constexpr int kButtonGap = 8;

constexpr UINT kMessageShown = WM_APP + 1;

}  // namespace

PasswordDialog::PasswordDialog(int templateId, const PasswordDialogContext& context, std::vector<Field> fields)
    : CSkinDialog(context.fonts),
      m_templateId(templateId),
      m_context(context),
      m_fields(std::move(fields)),
      m_stored(
          context.reads, [&stored = context.stored](const auto&) { return stored.Read(); },
          [this](const std::optional<Password>& stored, const auto&) { OnRead(stored); }) {}

bool PasswordDialog::Ask(HWND owner) {
    return DoModal(owner, m_templateId) == IDOK;
}

void PasswordDialog::OnInitDialog() {
    CSkinDialog::OnInitDialog();
    // From the tray there is no window of ours in front that this one would follow.
    ::PostMessageA(Window(), kMessageShown, 0, 0);
}

std::optional<LRESULT> PasswordDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kMessageShown) return CSkinDialog::OnMessage(message, wParam, lParam);
    ::SetForegroundWindow(Window());
    return 0;
}

void PasswordDialog::OnCreateContent() {
    AdoptControls();
    SetContentPixels({Scale(kWidth), PlaceControls(true)});
    (void)PlaceControls(false);
}

void PasswordDialog::AdoptControls() {
    const Language& language = m_context.language;
    ::SetWindowTextA(Window(), language.GetText(182, "Security password").c_str());
    ::SetDlgItemTextA(Window(), IDC_PASSWORD_HEADING, language.GetText(183, "Please enter password:").c_str());
    ::SetDlgItemTextA(Window(), IDOK, language.GetText(125, "OK").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, language.GetText(1001, "Cancel").c_str());
    m_heading.Adopt(Item(IDC_PASSWORD_HEADING), LabelKind::Bold, GetLook());
    for (const Field& field : m_fields) {
        Row& row = m_rows.emplace_back();
        ::SetDlgItemTextA(Window(), field.label, language.GetText(field.text).c_str());
        row.label.Adopt(Item(field.label), LabelKind::Plain, GetLook());
        row.edit.Adopt(Item(field.edit), GetLook());
        ::SendMessageA(row.edit.Window(), EM_LIMITTEXT, Password::kMaxLength, 0);
    }
    m_ok.Adopt(Item(IDOK), kPrimaryButton, GetLook());
    m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
}

int PasswordDialog::PlaceControls(bool measuresOnly) {
    const RECT content = ContentRect();
    const int width = Scale(kWidth);
    LONG top = content.top;
    const auto place = [&](const CControl& control, LONG height, int gap) {
        if (!measuresOnly) control.Place({content.left, top, content.left + width, top + height});
        top += height + Scale(gap);
    };
    place(m_heading, m_heading.Measure(width).cy, kHeadingGap);
    for (const Row& row : m_rows) {
        place(row.label, row.label.Measure(width).cy, kLabelGap);
        place(row.edit, FieldHeight(), kFieldGap);
    }
    top += Scale(kButtonTop);
    if (!measuresOnly) {
        const LONG left = content.left + width - m_cancel.Size().cx;
        m_cancel.MoveTo(left, top);
        m_ok.MoveTo(left - Scale(kButtonGap) - m_ok.Size().cx, top);
    }
    return top + m_ok.Size().cy - content.top;
}

void PasswordDialog::OnDestroy() {
    // An edit control keeps its text in memory of its own: another one of the same length takes its place there.
    for (const Row& row : m_rows) {
        const std::string blanks(static_cast<std::size_t>(::GetWindowTextLengthA(row.edit.Window())), ' ');
        ::SetWindowTextA(row.edit.Window(), blanks.c_str());
        ::SetWindowTextA(row.edit.Window(), "");
        ::SendMessageA(row.edit.Window(), EM_EMPTYUNDOBUFFER, 0, 0);
    }
}

void PasswordDialog::OnCancel() {
    m_isWanted = false;
    End(IDCANCEL);
}

void PasswordDialog::OnCommand(int id, int notification) {
    if (id != IDOK || notification != BN_CLICKED || m_isWanted) return;
    m_isWanted = true;
    ::EnableWindow(m_ok.Window(), FALSE);
    m_stored.Refresh();
}

void PasswordDialog::OnRead(const std::optional<Password>& stored) {
    if (!std::exchange(m_isWanted, false)) return;
    ::EnableWindow(m_ok.Window(), TRUE);
    if (stored) {
        OnStored(*stored);
    } else {
        Tell(kUnreadable, MessageSign::Failure);
    }
}

Password PasswordDialog::Entered(int edit) const {
    std::array<char, Password::kMaxLength + 1> text{};
    ::GetDlgItemTextA(Window(), edit, text.data(), static_cast<int>(text.size()));
    Password entered(text.data());
    WipeRecord(text);
    return entered;
}

void PasswordDialog::Tell(const Text& message, MessageSign sign) {
    ShowMessage(m_context.fonts, m_context.language, Window(), m_context.language.GetText(message), sign);
}

void PasswordDialog::Complain(const Text& message, int edit) {
    Tell(message, MessageSign::Failure);
    ::SetFocus(Item(edit));
    ::SendDlgItemMessageA(Window(), edit, EM_SETSEL, 0, -1);
}

}  // namespace brennvar
