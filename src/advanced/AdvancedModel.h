// The Advanced page: one row per advanced rule, in the order in which they are asked. The user switches rules on
// and off, moves them by keys, buttons and the mouse, and edits them in dialogs. What was changed shows at once,
// and after a pause what the service has stored.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "advanced/AdvancedRules.h"
#include "advanced/RuleTexts.h"
#include "base/Refreshed.h"
#include "base/StopSignal.h"
#include "base/TaskQueue.h"
#include "config/Language.h"
#include "lists/ListModel.h"
#include "views/RuleExchange.h"

namespace brennvar {

class AdvancedModel final : public ListModel, private AdvancedRulesWatcher, private RuleExchangeWatcher {
public:
    enum Column {
        kNumberColumn = static_cast<int>(RuleColumn::Number),
        kActionColumn = static_cast<int>(RuleColumn::Action),
        kWhatColumn = static_cast<int>(RuleColumn::What),
        kDescriptionColumn = static_cast<int>(RuleColumn::Description)
    };

    // All are borrowed. Which rules are covered by others is found on the queue, until stop is requested, and there
    // the texts are made that are searched. The
    // exchange replaces all rules at once; it is told what to do by commands to the owner of the page.
    struct Parts {
        const Language& language;
        AdvancedRules& rules;
        RuleExchange& exchange;
        TaskQueue& queue;
        const StopSignal& stop;
    };
    explicit AdvancedModel(const Parts& parts);
    ~AdvancedModel() override;

    [[nodiscard]] std::string Name() const override { return "Advanced"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override;
    [[nodiscard]] std::string EmptyText() const override;
    // What became of the last change, what can be taken back, or why nothing can be moved now.
    [[nodiscard]] std::optional<std::string> Summary() const override;
    [[nodiscard]] std::optional<ListProgress> Progress() const override;
    void StopProgress() override { m_parts.exchange.Stop(); }
    [[nodiscard]] int RowCount() const override { return m_rules ? m_rules->Count() : 0; }
    [[nodiscard]] ListCell Cell(int row, int column) const override;
    [[nodiscard]] std::string CellText(int row, int column) const override;
    [[nodiscard]] std::optional<std::string_view> SearchedText(int row) const override;
    [[nodiscard]] std::uint64_t SortNumber(int row, int column) const override;
    // The sentence of the rule, and why it does not do what it says.
    [[nodiscard]] std::string CellTip(int row, int column) const override;
    [[nodiscard]] std::string Key(int row) const override { return m_rules->KeyOf(row); }
    [[nodiscard]] std::optional<std::string> Program(int row) const override;
    [[nodiscard]] std::span<const ListAction> Actions() const override;
    [[nodiscard]] bool CanDo(int action, int row) const override;
    [[nodiscard]] std::optional<ListQuestion> Question(int action, std::span<const int> rows) const override;
    void Do(int action, std::span<const int> rows) override;
    void OnOrder(const RowOrder& order) override;
    [[nodiscard]] bool CanDragRows() const override { return m_isInOrder; }
    void DragRows(std::span<const int> rows, int before) override;
    void Read(ReadReason reason) override;

private:
    using Shared = std::shared_ptr<const StoredRules>;
    // What is found of rules when they have been read.
    struct Found {
        std::vector<int> covered;  // see FindCoveredRules
        RuleTexts texts;
    };

    void OnRulesChanged() override;
    void OnExchangeChanged() override { TellOfSummary(); }
    void OnRulesReplaced() override {}  // the exchange has had them read
    void TellOfSummary();
    void OnFound(std::optional<Found> found, const Shared& rules);
    // The row of the rule that covers this one, -1: none, or it is not known yet.
    [[nodiscard]] int CoverOf(int row) const;
    [[nodiscard]] std::vector<std::uint32_t> IdsOf(std::span<const int> rows) const;
    void Switch(std::span<const int> rows);

    const Parts m_parts;
    Shared m_rules;
    std::vector<int> m_covered;  // none while it is not known
    RuleTexts m_texts;           // of these rules with these covered ones, or none
    bool m_isInOrder = true;     // all rows are shown, in the order of the rules
    Refreshed<Found, Shared> m_finding;
};

}  // namespace brennvar
