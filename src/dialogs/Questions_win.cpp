#include "dialogs/Questions_win.h"

#include <utility>

namespace brennvar {
namespace {

std::string Caption(const Language& language) {
    return language.GetText(41, "Brennvar Personal Firewall");
}

}  // namespace

bool AskToContinue(const CFonts& fonts, const Language& language, HWND owner, std::string question,
                   std::string verb, DefaultAnswer byEnter) {
    return MessageDialog(fonts, {.caption = Caption(language),
                                 .message = std::move(question),
                                 .ok = std::move(verb),
                                 .cancel = language.GetText(1001, "Cancel"),
                                 .isCancelDefault = byEnter == DefaultAnswer::Cancel})
        .Ask(owner);
}

void ShowMessage(const CFonts& fonts, const Language& language, HWND owner, std::string text, MessageSign sign) {
    (void)MessageDialog(fonts, {.caption = Caption(language),
                                .message = std::move(text),
                                .ok = language.GetText(125, "OK"),
                                .cancel = {},
                                .sign = sign})
        .Ask(owner);
}

}  // namespace brennvar
