// A message with OK and Cancel that comes of its own accord, and asks as carefully as any question.
#pragma once

#include <functional>
#include <optional>

#include "dialogs/MessageDialog_win.h"
#include "prompts/QuestionStand_win.h"

namespace brennvar {

class QuestionMessage final : public MessageDialog {
public:
    // answered is called when the message is answered, and must not destroy it.
    QuestionMessage(const CFonts& fonts, MessageTexts texts, std::function<void()> answered);

    // Shows it and returns; the owner takes no input until it is answered.
    void Open(HWND owner);
    // True for OK; anything else that ends it is Cancel, also when it could not be shown. Nothing while it stands.
    [[nodiscard]] std::optional<bool> Answer() const;

private:
    [[nodiscard]] RECT OpeningPlace(SIZE size) const override { return m_stand.OpeningPlace(size); }
    void OnInitDialog() override;
    void OnCommand(int id, int notification) override;
    void OnCancel() override;
    void OnTimer(UINT_PTR id) override { m_stand.OnTimer(id); }
    void OnEnded() override { m_answered(); }

    const std::function<void()> m_answered;
    HWND m_owner = nullptr;
    QuestionStand m_stand;
};

}  // namespace brennvar
