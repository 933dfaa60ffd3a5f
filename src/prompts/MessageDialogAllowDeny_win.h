// Asks the user whether one program may act on another.
#pragma once

#include "prompts/ActivityText.h"
#include "prompts/QuestionDialog_win.h"

namespace brennvar {

class MessageDialogAllowDeny final : public QuestionDialog {
public:
    // The fonts are borrowed for the life of the dialog.
    MessageDialogAllowDeny(const CFonts& fonts, const ActivityQuestion& question);

private:
    [[nodiscard]] static Content ContentOf(const ActivityQuestion& question);
};

}  // namespace brennvar
