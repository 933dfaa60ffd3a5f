// The rows of the Applications page: what the rules file holds, and over it what the user has changed and the
// service has not stored yet. A path has one rule as far as the service is concerned: of several records for a path
// the first one counts. Each record has its row all the same, and a change shows in all rows of its path.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "config/SkinTones.h"
#include "config/Text.h"
#include "ipc/CommandRecord.h"
#include "rules/ApplicationRules.h"

namespace brennvar {

// How an action is shown.
[[nodiscard]] Text NameOfState(ApplicationState state);
[[nodiscard]] Tone ToneOfState(ApplicationState state);

// What a click on an action makes of it: Deny, Ask, Allow and Deny again.
[[nodiscard]] ApplicationState NextState(ApplicationState state);
[[nodiscard]] RuleCommandAction CommandActionOf(ApplicationState state);

class ApplicationList {
public:
    [[nodiscard]] int Count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] const ApplicationRow& Row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    // As the user sees it: changed, or as it is stored.
    [[nodiscard]] ApplicationState StateOf(int row) const;
    // Its rule is being removed.
    [[nodiscard]] bool IsLeaving(int row) const;

    // The user has changed it; number: of the change, see ApplicationChanges.
    void Change(int row, RuleCommandAction action, std::uint64_t number);

    enum class Order {
        AsRead,
        Kept,  // rows stay where they are, new ones come behind them: nothing moves away under the mouse
    };
    // A reading that was begun when the changes up to this number were over: what it holds is shown for them. False
    // when the rows are the same as before, in the same order; their actions may be others.
    bool Take(std::vector<ApplicationRow> rows, std::uint64_t over, Order order);

private:
    struct UnderWay {
        RuleCommandAction action;
        std::uint64_t number;
    };
    [[nodiscard]] const UnderWay* ChangeOf(int row) const;
    void KeepOrder(std::vector<ApplicationRow>& rows) const;

    std::vector<ApplicationRow> m_rows;
    std::unordered_map<std::string, UnderWay> m_changes;  // under way, by path
};

}  // namespace brennvar
