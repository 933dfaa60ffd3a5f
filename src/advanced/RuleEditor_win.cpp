#include "advanced/RuleEditor_win.h"

#include "base/FlagWhile.h"
#include "dialogs/ModalPlace_win.h"

namespace brennvar {

std::optional<AdvancedRule> WinRuleEditor::AskNew(const AdvancedRule& first) {
    AddCustomRuleDialog dialog(m_parts, first);
    return Ask(dialog);
}

std::optional<AdvancedRule> WinRuleEditor::AskChange(const AdvancedRule& stored, RulePlace place) {
    EditCustomRuleDialog dialog(m_parts, stored, place);
    return Ask(dialog);
}

std::optional<AdvancedRule> WinRuleEditor::Ask(AdvancedRuleDialog& dialog) {
    const HWND place = m_owner ? ModalOwner(m_owner).value_or(nullptr) : nullptr;
    if (!place || m_isOpen) return std::nullopt;
    const FlagWhile open(m_isOpen);
    return dialog.Ask(place);
}

}  // namespace brennvar
