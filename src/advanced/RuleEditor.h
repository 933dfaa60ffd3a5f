// The dialogs in which an advanced rule is written, as those who ask for one see them; the shell has the windows
// (advanced/AdvancedRuleDialog_win.h). User-interface thread only. A call returns when the user has answered, which
// pumps messages.
#pragma once

#include <cstddef>
#include <optional>

#include "rules/AdvancedRule.h"

namespace brennvar {

// Where a stored rule stands: the rules above it are asked first.
struct RulePlace {
    std::size_t number = 0;  // from 1
    std::size_t count = 0;   // of all rules
};

class RuleEditor {
public:
    virtual ~RuleEditor() = default;
    // What stands in the fields at first is given. Nothing: the user would rather not, or a dialog is open that no
    // other one may come over. The rule that is answered is whole.
    [[nodiscard]] virtual std::optional<AdvancedRule> AskNew(const AdvancedRule& first) = 0;
    // The same of a rule that is stored, which may be damaged. It keeps its identifier.
    [[nodiscard]] virtual std::optional<AdvancedRule> AskChange(const AdvancedRule& stored, RulePlace place) = 0;
};

}  // namespace brennvar
