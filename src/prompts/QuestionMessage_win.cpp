#include "prompts/QuestionMessage_win.h"

#include <utility>

#include "ui/ToolkitIds.h"

namespace brennvar {

QuestionMessage::QuestionMessage(const CFonts& fonts, MessageTexts texts, std::function<void()> answered)
    : MessageDialog(fonts, std::move(texts)), m_answered(std::move(answered)) {}

void QuestionMessage::Open(HWND owner) {
    m_owner = owner;
    (void)CDialog::Open(owner, IDD_MESSAGE_OK_CANCEL, Appearance::Unfocused);
}

std::optional<bool> QuestionMessage::Answer() const {
    if (IsOpen()) return std::nullopt;
    return Result() == IDOK;
}

void QuestionMessage::OnInitDialog() {
    CSkinDialog::OnInitDialog();
    KeepTexts();
    m_stand.Begin(Window(), m_owner, {IDOK, IDCANCEL});
}

void QuestionMessage::OnCommand(int id, int notification) {
    if (id == IDOK && notification == BN_CLICKED && m_stand.ButtonsWork()) End(IDOK);
}

void QuestionMessage::OnCancel() {
    if (m_stand.ButtonsWork()) End(IDCANCEL);
}

}  // namespace brennvar
