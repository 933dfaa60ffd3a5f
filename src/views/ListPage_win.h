// A page that is a list: its rows, a search box above them, their number below. The user sorts by a click on a
// header, looks for text, copies rows, and finds the columns as wide as they were left.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "config/Language.h"
#include "config/UserValues.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "dialogs/Page_win.h"
#include "tree/Tree_win.h"
#include "ui/PopupMenu_win.h"
#include "views/RowOrder.h"

namespace brennvar {

// Borrowed for the life of the page.
struct ListPageContext {
    const CFonts& fonts;
    const Language& language;
    UserValues& userValues;
};

class ListPage : public CPage, private TreeRows {
public:
    void OnFind() override;

protected:
    // widthsName: begins the names of the user values that keep the widths of the columns.
    ListPage(const ListPageContext& context, PageTexts texts, std::string widthsName);

    struct Content {
        std::vector<TreeColumn> columns;
        std::string emptyText;
    };
    [[nodiscard]] virtual Content DescribeList() const = 0;
    // The rows as they were read, numbered from 0.
    [[nodiscard]] virtual int SourceRowCount() const = 0;
    [[nodiscard]] virtual TreeCell SourceCell(int row, int column) const = 0;
    // What makes a row the same one in the next reading.
    [[nodiscard]] virtual std::string SourceKey(int row) const = 0;
    // What is searched and sorted: the text of the cell, where that can be had for less.
    [[nodiscard]] virtual std::string SourceText(int row, int column) const { return SourceCell(row, column).text; }
    // The icon of a row that is in sight, borrowed until it has been painted; null: none.
    [[nodiscard]] virtual HICON SourceIcon(int /*row*/) const { return nullptr; }

    // The list, for pages that want more of it; made once, before OnListCreated.
    [[nodiscard]] virtual std::unique_ptr<CTree> MakeTree() { return std::make_unique<CTree>(); }
    virtual void OnListCreated() {}
    // The band below the list, which holds the number of rows at its left: its height in pixels of the screen, at
    // least that of a line, and where it is.
    [[nodiscard]] virtual int FooterHeight() const;
    virtual void OnPlaceFooter(const RECT&) {}
    // By whomever: other rows are selected now, or none.
    virtual void OnSelectionChanged() {}
    // Items of the list's menu, before those that every list has; their numbers from 100 upwards. OnPageCommand
    // gets what was chosen, and what the page's own buttons tell.
    virtual void AddMenuItems(CPopupMenu&) const {}
    virtual void OnPageCommand(int /*id*/) {}

    // Changes the rows by the given step and shows them; what was selected is selected again.
    void ChangeRows(const std::function<void()>& change);
    // The same with a step that tells whether there are other rows now, or others in another order; where only
    // their looks have changed, they stay where they are until the next search or sort.
    void ChangeRowsIfOther(const std::function<bool()>& change);
    // Texts of rows have changed; the rows stay likewise.
    void RowTextsChanged();
    // Why there are no rows; while something is searched the page says that nothing was found.
    void SetEmptyText(const std::string& text);

    [[nodiscard]] const Language& GetLanguage() const { return m_context.language; }

    // Rows that are shown, numbered as in the list.
    [[nodiscard]] int RowCount() const final { return static_cast<int>(m_shown.size()); }
    [[nodiscard]] int SourceRowOf(int row) const { return m_shown[static_cast<std::size_t>(row)]; }
    [[nodiscard]] std::vector<int> SelectedSourceRows() const;
    [[nodiscard]] bool IsInSight(int row) const;

private:
    void OnCreateContent() final;
    void OnPlaceContent(const RECT& place) final;
    void OnCommand(int id, int notification) final;
    [[nodiscard]] int RoomBesideTitle() const final;

    [[nodiscard]] TreeCell Cell(int row, int column) const final;

    void Arrange();
    // The same rows in the order that is wanted now.
    void Rearrange();
    void SortBy(int column);
    void ShowMenu(POINT point);
    void ReadWidths();
    void WriteWidths() const;
    [[nodiscard]] std::string WidthName(std::size_t column) const;

    const ListPageContext m_context;
    const std::string m_widthsName;
    std::vector<TreeColumn> m_columns;
    std::string m_emptyText;
    CEdit m_search;
    std::unique_ptr<CTree> m_list;
    CLabel m_count;
    RowOrder m_order;
    RowArranger m_arranger;
    std::vector<int> m_shown;  // numbers of source rows
};

}  // namespace brennvar
