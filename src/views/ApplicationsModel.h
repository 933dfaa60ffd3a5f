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
    // The rules that were removed last, and are not there again.
    [[nodiscard]] bool CanUndoRemoval() const { return !m_removed.empty(); }
    void KeepRemoved(std::span<const int> rows);
    void ReadInOrder(ApplicationList::Order order) { m_file.Refresh({.over = m_settled, .order = order}); }
    void OnRead(std::vector<ApplicationRow> rows, const Request& request);
    void SettleLater();
    void Change(std::span<const int> rows, RuleCommandAction action, int command);

    const Language& m_language;
    ApplicationChanges& m_changes;
    const ServiceLink& m_link;
    RuleExchange& m_exchange;
    ApplicationList m_rows;
    std::vector<ApplicationChange> m_removed;  // what brings back the rules that were removed last
    bool m_wasRead = false;
    std::uint64_t m_settled = 0;  // changes up to this one show as they are stored
    Refreshed<std::vector<ApplicationRow>, Request> m_file;
};

}  // namespace brennvar
