#include "views/ExchangeTexts.h"

namespace brennvar {

std::optional<ListProgress> ProgressOf(const RuleExchange& exchange, const Language& language) {
    switch (exchange.Current()) {
        case RuleExchange::Work::Exporting:
            return ListProgress{.text = language.GetText(1860, "Exporting the rules")};
        case RuleExchange::Work::Importing:
            return ListProgress{.text = language.GetText(1861, "Importing the rules")};
        default: return std::nullopt;
    }
}

std::optional<std::string> SummaryOf(const RuleExchange& exchange, RuleSet set, const Language& language) {
    switch (exchange.LastDone(set)) {
        case RuleExchange::Last::Imported:
            return language.GetText(1858,
                                    "The rules have been imported. 'Undo' brings back what was there before.");
        case RuleExchange::Last::Undone:
            return language.GetText(1859, "The rules from before the import are back. 'Undo' imports them again.");
        default: return std::nullopt;
    }
}

std::optional<ListQuestion> UndoQuestionOf(const RuleExchange& exchange, RuleSet set, const Language& language) {
    const RestorePoint* const point = exchange.Undoable(set);
    if (!point || exchange.LastDone(set) != RuleExchange::Last::None) return std::nullopt;
    return ListQuestion{.text = language.GetText(1862, "Bring back the rules that were replaced at this time?") +
                                '\n' + point->moment,
                        .yes = language.GetText(1830, "Undo")};
}

}  // namespace brennvar
