#include "dialogs/Questions_win.h"

#include <utility>

#include "dialogs/MessageDialog_win.h"

namespace brennvar {
namespace {

bool Ask(const CFonts& fonts, const Language& language, HWND owner, std::string message, std::string cancel,
         DefaultAnswer byEnter) {
    MessageDialog dialog(fonts, {.caption = language.GetText(41, "Brennvar Personal Firewall"),
                                 .message = std::move(message),
                                 .ok = language.GetText(125, "OK"),
                                 .cancel = std::move(cancel),
                                 .isCancelDefault = byEnter == DefaultAnswer::Cancel});
    return dialog.Ask(owner);
}

}  // namespace

bool AskToContinue(const CFonts& fonts, const Language& language, HWND owner, std::string question,
                   DefaultAnswer byEnter) {
    return Ask(fonts, language, owner, std::move(question), language.GetText(1001, "Cancel"), byEnter);
}

void ShowMessage(const CFonts& fonts, const Language& language, HWND owner, std::string text) {
    (void)Ask(fonts, language, owner, std::move(text), {}, DefaultAnswer::Ok);
}

}  // namespace brennvar
