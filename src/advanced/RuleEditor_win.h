// The editor of advanced rules, over the control center or whatever dialog of it is open.
#pragma once

#include "advanced/AdvancedRuleDialog_win.h"
#include "advanced/RuleEditor.h"

namespace brennvar {

class WinRuleEditor final : public RuleEditor {
public:
    // What they refer to is borrowed.
    explicit WinRuleEditor(const RuleDialogParts& parts) : m_parts(parts) {}
    // The control center; null: there is none, and nothing can be asked.
    void SetOwner(HWND owner) { m_owner = owner; }

    [[nodiscard]] std::optional<AdvancedRule> AskNew(const AdvancedRule& first) override;
    [[nodiscard]] std::optional<AdvancedRule> AskChange(const AdvancedRule& stored, RulePlace place) override;

private:
    [[nodiscard]] std::optional<AdvancedRule> Ask(AdvancedRuleDialog& dialog);

    const RuleDialogParts m_parts;
    HWND m_owner = nullptr;
    bool m_isOpen = false;  // the choices belong to one dialog
};

}  // namespace brennvar
