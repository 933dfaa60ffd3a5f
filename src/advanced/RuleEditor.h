// The dialogs in which an advanced rule is written, as those who ask for one see them; the shell has the windows
// (advanced/AdvancedRuleDialog_win.h). User-interface thread only. A call returns when the user has answered, which
// pumps messages.
#pragma once

#include <optional>

#include "rules/AdvancedRule.h"

namespace brennvar {

class RuleEditor {
public:
    virtual ~RuleEditor() = default;
    // What stands in the fields at first is given. Nothing: the user would rather not, or a dialog is open that no
    // other one may come over. The rule that is answered is whole.
    [[nodiscard]] virtual std::optional<AdvancedRule> AskNew(const AdvancedRule& first) = 0;
    // The same of a rule that is stored, which may be damaged. It keeps its identifier.
    [[nodiscard]] virtual std::optional<AdvancedRule> AskChange(const AdvancedRule& stored) = 0;
};

}  // namespace brennvar
