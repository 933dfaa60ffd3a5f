// The page that shows a list: a model's rows, a search box above them, their number and the buttons of the model's
// actions below. The user sorts by a click on a header, looks for text, copies rows, opens a row's details and
// menu, and finds the columns as wide as they were left, or wide enough for what they hold. What the rows are is
// the model's.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/ShellOpen_win.h"
#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "config/UserValues.h"
#include "controls/DrawnText_win.h"
#include "controls/SearchBox_win.h"
#include "dialogs/Page_win.h"
#include "lists/ListActions_win.h"
#include "lists/ListChoices_win.h"
#include "lists/ListModel.h"
#include "lists/ListTree_win.h"
#include "lists/PageOwner.h"
#include "lists/ProgramReader_win.h"
#include "lists/RowOrder.h"

namespace brennvar {

class DetailsDialog;

// Borrowed for the life of the page.
struct ListPageContext {
    const CFonts& fonts;
    const Language& language;
    UserValues& userValues;
    PageOwner& owner;
};

class ListPage final : public CPage, private TreeRows, private ListView, private PossibleActions {
public:
    ListPage(const ListPageContext& context, PageTexts texts, std::unique_ptr<ListModel> model);

    void Reload() override { m_model->Read(ReadReason::Wished); }
    void OnFind() override;
    void OnRulesChanged() override;
    void OnLogsDeleted() override;
    void OnEscape() override;
    bool MayLeave() override;
    void ShowRow(const std::string& key) override;

private:
    static constexpr UINT kMessageProgramRead = WM_APP + 1;

    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override;
    [[nodiscard]] int RoomBesideTitle() const override;
    void OnDestroy() override;
    void OnShow() override { m_model->Read(ReadReason::Shown); }
    void OnHide() override;
    void OnTimer(UINT_PTR id) override;
    void OnCommand(int id, int notification) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void BeforeChange() override;
    void AfterChange(Change change) override;
    void RowsCameFirst(int count) override;
    void EmptyTextChanged() override { ShowEmptyText(); }
    void ChoicesChanged() override { m_choices.Show(m_model->Choices()); }
    void OrderKept(const RowOrder& order) override;
    void ProgressChanged() override;
    void SummaryChanged() override { SetLine(m_model->Summary().value_or("")); }
    void WakeIn(std::chrono::milliseconds time) override;
    void PostCommand(int command) override { PostToOwner(command); }
    void OpenPage(int command, const std::string& key) override { m_context.owner.OpenPageAt(command, key); }
    void ShowSheet(const DetailsSheet& sheet) override;
    void UpdateSheet(const DetailsSheet& sheet) override;
    std::optional<SavePlace> AskSavePlace(const SaveWish& wish) override;
    void CopyText(const std::string& text) override;
    void OpenLink(const std::string& address) override { OpenInBrowser(address); }
    void OpenFolderOf(const std::string& file) override { brennvar::OpenFolderOf(file); }
    void OpenTool(AddressTool tool, const std::string& hostOrAddress) override {
        m_context.owner.OpenTool(tool, hostOrAddress);
    }
    void MakeRule(const TrafficFacts& facts) override { m_context.owner.MakeRule(facts); }
    void Explain(const TrafficFacts& facts) override { m_context.owner.Explain(facts); }
    void Tell(const std::string& title, const std::string& text) override { m_context.owner.Notify(title, text); }

    // Rows as they are shown; the model's numbers are those of source rows. They are the same when the model
    // arranges its rows itself.
    [[nodiscard]] int RowCount() const override {
        return m_arrangesItself ? m_model->RowCount() : static_cast<int>(m_shown.size());
    }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;
    [[nodiscard]] TreeCell Words(int row, int column) const override;
    [[nodiscard]] std::string Tip(int row, int column) const override;
    [[nodiscard]] TreeRow Row(int row) const override;
    void SetExpanded(int row, bool isExpanded) override { m_model->SetExpanded(SourceRowOf(row), isExpanded); }
    [[nodiscard]] int SourceRowOf(int row) const {
        return m_arrangesItself ? row : m_shown[static_cast<std::size_t>(row)];
    }
    [[nodiscard]] int FocusedRow() const;  // -1: none
    [[nodiscard]] std::vector<int> SelectedSourceRows() const;
    [[nodiscard]] bool IsInSight(int row) const;

    // Columns (ListPageColumns_win.cpp)
    void CreateList();
    void ReadWidths();
    void WriteWidths() const;
    [[nodiscard]] std::string WidthName(std::size_t column) const;

    // Order (ListPageRows_win.cpp)
    void Arrange();
    void ShowCount();
    void RestoreSelection();
    // Those of the awaited rows that are there now.
    void SelectAwaited();
    void FindWantedRow();
    // The same rows in the order that is wanted now.
    void Rearrange();
    void SortBy(int column);
    void ShowEmptyText();
    void OnSelectionChanged() const;

    // Actions (ListPageActions_win.cpp)
    [[nodiscard]] bool HasSelection() const { return !m_list->SelectedRows().IsEmpty(); }
    [[nodiscard]] bool IsPossible(const ListAction& action) const override;
    [[nodiscard]] bool CopyByModel();
    void ShowMenu(POINT point);
    void SelectAll();
    void DoAction(const ListAction& action);
    // Keeps the focused row in sight when the step moves it.
    void DoStep(const std::function<void()>& step);
    void DoForRow(int action, int row);
    void DragRows(int before);
    [[nodiscard]] std::vector<int> RowsOf(const ListAction& action) const;
    [[nodiscard]] bool Confirm(const ListQuestion& question) const;
    [[nodiscard]] bool ClickCell(int row, int column);
    [[nodiscard]] bool PressKey(ListKey key);
    // Who asks for the details: a click into the row may be about the row alone.
    enum class DetailsFor { Click, Action };
    void ShowDetails(int row, DetailsFor wantedFor);
    [[nodiscard]] ProgramReader& Programs() const;
    void RepaintRowsOf(const std::string& program) const;

    const ListPageContext m_context;
    const std::unique_ptr<ListModel> m_model;
    const bool m_arrangesItself;
    std::vector<ListColumn> m_columns;
    int m_iconColumn = 0;
    CSearchBox m_search;
    ListChoices m_choices;
    std::unique_ptr<CListTree> m_list;
    CDrawnText m_count;
    ListActions m_actions;
    bool m_hasUserWidths = false;  // the user has chosen the widths of the columns

    RowOrder m_order;
    RowArranger m_arranger;
    std::vector<int> m_shown;    // numbers of source rows; none when the model arranges them
    bool m_hasNewOrder = false;  // the model has been told, and its rows have not come yet
    std::string m_wantedRow;     // the key of a row that is to be seen as soon as it is there
    // Between BeforeChange and AfterChange: the keys of the rows.
    std::unordered_set<std::string> m_selectedBefore;
    bool m_wasAllSelected = false;
    std::optional<std::string> m_focusedBefore;
    std::optional<std::string> m_firstBefore;  // in sight; none when it is the first of all
    bool m_wasFocusSeen = false;
    // What of it has not come yet, of rows that come piece by piece: until all have, or the user selects others.
    struct Awaited {
        std::unordered_set<std::string> selected;
        std::optional<std::string> focused;
        bool isFocusSeen = false;          // it has to be in sight then
        std::optional<std::string> first;  // in sight
    } m_awaited;

    DetailsDialog* m_sheet = nullptr;          // while it is open
    std::uint64_t m_detailsAsked = 0;          // only the last answer is shown
    std::atomic<HWND> m_postTarget = nullptr;  // where the thread below posts to; null while there is no window
    // Made when it is first needed. Last: its thread ends before the rest goes. Mutable, because painting a row has
    // its icon read.
    mutable std::unique_ptr<ProgramReader> m_programs;
};

}  // namespace brennvar
