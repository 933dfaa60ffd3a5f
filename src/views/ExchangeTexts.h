// What every page of rules says of their export and import (views/RuleExchange.h).
#pragma once

#include <optional>
#include <string>

#include "config/Language.h"
#include "lists/ListModel.h"
#include "views/RuleExchange.h"

namespace brennvar {

// What is under way; nothing, when there is none.
[[nodiscard]] std::optional<ListProgress> ProgressOf(const RuleExchange& exchange, const Language& language);
// What was done last to the rules of the page, where it can be taken back.
[[nodiscard]] std::optional<std::string> SummaryOf(const RuleExchange& exchange, RuleSet set,
                                                   const Language& language);
// What was done a moment ago is plain and needs no question; what was done some other day is not.
[[nodiscard]] std::optional<ListQuestion> UndoQuestionOf(const RuleExchange& exchange, RuleSet set,
                                                         const Language& language);

}  // namespace brennvar
