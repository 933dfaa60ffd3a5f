#include "views/RuleDialogs_win.h"

#include "dialogs/MessageDialog_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "dialogs/SavePlaceDialog_win.h"
#include "views/ImportDialog_win.h"

namespace brennvar {

HWND WinRuleDialogs::Place() const {
    return m_owner ? ModalOwner(m_owner).value_or(nullptr) : nullptr;
}

std::optional<std::string> WinRuleDialogs::AskSavePath(const SaveWish& wish) {
    const HWND place = Place();
    const auto chosen = place ? AskSavePlace(place, wish) : std::nullopt;
    return chosen ? std::optional(chosen->path) : std::nullopt;
}

std::optional<std::string> WinRuleDialogs::AskOpenPath(const OpenWish& wish) {
    const HWND place = Place();
    return place ? brennvar::AskOpenPath(place, wish) : std::nullopt;
}

bool WinRuleDialogs::AskImport(const ImportRows& rows) {
    const HWND place = Place();
    return place && ImportDialog(m_fonts, m_language, rows).Ask(place);
}

bool WinRuleDialogs::Ask(const std::string& question, const std::string& yes, Otherwise otherwise) {
    const HWND place = Place();
    if (!place) return false;
    const bool isCancel = otherwise == Otherwise::Cancel;
    return MessageDialog(m_fonts, {.caption = m_language.GetText(41, "Brennvar Personal Firewall"),
                                   .message = question,
                                   .ok = yes,
                                   .cancel = isCancel ? m_language.GetText(1001, "Cancel")
                                                      : m_language.GetText(1043, "Close"),
                                   .isCancelDefault = true})
        .Ask(place);
}

void WinRuleDialogs::Tell(const std::string& text) {
    if (const HWND place = Place()) ShowMessage(m_fonts, m_language, place, text);
}

}  // namespace brennvar
