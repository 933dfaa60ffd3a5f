// The Applications page: one row per application rule. The user changes the action of one with a click or Space,
// and that of all selected ones with buttons and menu; what was clicked is shown at once, and after a pause what
// the service has stored.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "controls/Button_win.h"
#include "rules/ApplicationRules.h"
#include "views/ApplicationChanges.h"
#include "views/ApplicationList.h"
#include "views/ApplicationsTree_win.h"
#include "views/ListPage_win.h"
#include "views/ProgramReader_win.h"

namespace brennvar {

class ApplicationsPage final : public ListPage {
public:
    struct Parts {
        // Reads the rules without keeping the caller waiting; calls done later, on the same thread.
        std::function<void(std::function<void(std::vector<ApplicationRow>)> done)> read;
        // Takes the user's changes; the owner of the page is told of each by a command (IDM_APPLICATION_ASK and so
        // on) and has them carried out. Borrowed for the life of the window.
        ApplicationChanges& changes;
        // Changes cannot be stored now.
        std::function<bool()> isServiceMissing;
    };
    ApplicationsPage(const ListPageContext& context, PageTexts texts, Parts parts);

    void Reload() override;
    void OnRulesChanged() override;

private:
    struct ActionButton;
    static constexpr std::size_t kActionCount = 4;
    static const std::array<ActionButton, kActionCount>& Actions();

    void OnDestroy() override;
    void OnShow() override;
    void OnHide() override;
    void OnTimer(UINT_PTR id) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    [[nodiscard]] Content DescribeList() const override;
    [[nodiscard]] std::unique_ptr<CTree> MakeTree() override;
    void OnListCreated() override;
    [[nodiscard]] int FooterHeight() const override;
    void OnPlaceFooter(const RECT& place) override;
    [[nodiscard]] int SourceRowCount() const override { return m_rows.Count(); }
    [[nodiscard]] TreeCell SourceCell(int row, int column) const override;
    [[nodiscard]] std::string SourceText(int row, int column) const override;
    [[nodiscard]] std::string SourceKey(int row) const override { return m_rows.Row(row).path; }
    [[nodiscard]] HICON SourceIcon(int row) const override { return m_programs.Icon(m_rows.Row(row).path); }
    void OnSelectionChanged() override;
    void AddMenuItems(CPopupMenu& menu) const override;
    void OnPageCommand(int id) override;

    void Read(ApplicationList::Order order);
    void OnRead(std::vector<ApplicationRow> rows, std::uint64_t over, ApplicationList::Order order);
    // Shows what is stored, once the service has had the time to store it.
    void SettleLater();
    void Change(const std::vector<int>& sourceRows, RuleCommandAction action);
    void ChangeSelection(RuleCommandAction action);
    [[nodiscard]] bool ConfirmRemoval(std::size_t count) const;
    void ShowDetails(int row);
    [[nodiscard]] BalloonTexts DetailTexts(int sourceRow, const ProgramDetails& details) const;
    void RepaintRowsOf(const std::string& path) const;

    const Parts m_parts;
    ApplicationList m_rows;
    CApplicationsTree* m_tree = nullptr;  // the base's list
    std::array<CButton, kActionCount> m_buttons;

    bool m_wasRead = false;
    bool m_isReading = false;
    bool m_readsAgain = false;
    ApplicationList::Order m_nextOrder = ApplicationList::Order::Kept;
    std::uint64_t m_settled = 0;               // changes up to this one show as they are stored
    std::uint64_t m_detailsAsked = 0;          // only the last answer is shown
    std::atomic<HWND> m_postTarget = nullptr;  // where the thread below posts to; null while there is no window
    // Last: its thread ends before the rest goes. Mutable, because asking for an icon has it read.
    mutable ProgramReader m_programs;
};

}  // namespace brennvar
