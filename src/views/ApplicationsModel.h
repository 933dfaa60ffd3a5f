// The Applications page: one row per application rule. The user changes the action of one with a click or Space,
// and that of all selected ones with buttons and menu; what was clicked is shown at once, and after a pause what
// the service has stored.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Refreshed.h"
#include "config/Language.h"
#include "ipc/ServiceLink.h"
#include "lists/ListModel.h"
#include "rules/ApplicationRules.h"
#include "views/ApplicationChanges.h"
#include "views/ApplicationList.h"
#include "views/RuleExchange.h"

namespace brennvar {

class ApplicationsModel final : public ListModel, private ApplicationChangesWatcher, private RuleExchangeWatcher {
public:
    enum Column { kNameColumn, kPathColumn, kActionColumn };

    // load: reads the rules, on the queue. changes take what the user does; the owner of the page is told of each
    // by a command (IDM_APPLICATION_ASK and so on) and has them carried out. The link knows whether they can be
    // stored. The exchange replaces all rules at once. All but load are borrowed.
    ApplicationsModel(const Language& language, TaskQueue& reads, std::function<std::vector<ApplicationRow>()> load,
                      ApplicationChanges& changes, const ServiceLink& link, RuleExchange& exchange);
    ~ApplicationsModel() override;

    [[nodiscard]] std::string Name() const override { return "Applications"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override;
    [[nodiscard]] std::string EmptyText() const override;
    // What was done last, where it can be taken back.
    [[nodiscard]] std::optional<std::string> Summary() const override;
    [[nodiscard]] std::optional<ListProgress> Progress() const override;
    void StopProgress() override { m_exchange.Stop(); }
    [[nodiscard]] int RowCount() const override { return m_rows.Count(); }
    [[nodiscard]] ListCell Cell(int row, int column) const override;
    [[nodiscard]] std::string CellText(int row, int column) const override;
    [[nodiscard]] std::string Key(int row) const override { return m_rows.Row(row).path; }
    // Without regard to case, as paths are: another page may have it in another spelling.
    [[nodiscard]] int FindRow(const std::string& key) const override;
    [[nodiscard]] std::optional<std::string> Program(int row) const override { return m_rows.Row(row).path; }
    [[nodiscard]] RowDetails Details(int row) const override;
    [[nodiscard]] std::span<const ListAction> Actions() const override;
    [[nodiscard]] bool CanDo(int action, int row) const override;
    [[nodiscard]] std::optional<ListQuestion> Question(int action, std::span<const int> rows) const override;
    void Do(int action, std::span<const int> rows) override;

    void Read(ReadReason reason) override;
    // The service has had the time to store what was changed.
    void OnWake() override;

private:
    struct Request {
        std::uint64_t over = 0;  // changes up to this one are
        ApplicationList::Order order = ApplicationList::Order::Kept;
    };

    void OnChangesOver() override { SettleLater(); }
    void OnExchangeChanged() override { TellOfUndo(); }
    void OnRulesReplaced() override;
    void TellOfUndo();
    void Undo();
    // Rules that were removed at one time. They can be brought back for as long as they are not there again.
    struct Removal {
        std::vector<ApplicationChange> rules;  // what brings them back
        std::uint64_t number = 0;              // the change after which what is read shows whether it came about
        bool isBeingUndone = false;
    };
    [[nodiscard]] bool CanUndoRemoval() const { return !m_removals.empty() && !m_removals.back().isBeingUndone; }
    [[nodiscard]] Removal RemovalOf(std::span<const int> rows) const;
    void ForgetWhatIsThere(std::uint64_t over);
    void ReadInOrder(ApplicationList::Order order) { m_file.Refresh({.over = m_settled, .order = order}); }
    void OnRead(std::vector<ApplicationRow> rows, const Request& request);
    void SettleLater();
    void Change(std::span<const int> rows, RuleCommandAction action, int command);

    const Language& m_language;
    ApplicationChanges& m_changes;
    const ServiceLink& m_link;
    RuleExchange& m_exchange;
    ApplicationList m_rows;
    // The last one that came about, and behind it those under way: one that is refused takes nothing away.
    std::vector<Removal> m_removals;
    bool m_wasRead = false;
    std::uint64_t m_settled = 0;  // changes up to this one show as they are stored
    Refreshed<std::vector<ApplicationRow>, Request> m_file;
};

}  // namespace brennvar
