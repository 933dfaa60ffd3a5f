// Asks the user about one connection.
#pragma once

#include "prompts/PromptQuestion.h"
#include "prompts/QuestionDialog_win.h"

namespace brennvar {

class ConfirmationDialog final : public QuestionDialog {
public:
    // The fonts are borrowed for the life of the dialog.
    ConfirmationDialog(const CFonts& fonts, const PromptQuestion& question);

private:
    [[nodiscard]] static Content ContentOf(const PromptQuestion& question);
};

}  // namespace brennvar
