// A page that is a list: its rows, a search box above them, their number below. The user sorts by a click on a
// header, looks for text, copies rows, and finds the columns as wide as they were left.
#pragma once

#include <string>
#include <vector>

#include "config/Language.h"
#include "config/UserValues.h"
#include "ui/Edit.h"
#include "ui/Label.h"
#include "ui/Page.h"
#include "ui/Tree.h"
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

    // Changes the rows by the given step and shows them; what was selected is selected again.
    void ChangeRows(const std::function<void()>& change);
    // Why there are no rows; while something is searched the page says that nothing was found.
    void SetEmptyText(const std::string& text);

    [[nodiscard]] const Language& GetLanguage() const { return m_context.language; }

private:
    void OnCreateContent() final;
    void OnPlaceContent(const RECT& place) final;
    void OnCommand(int id, int notification) final;
    [[nodiscard]] int RoomBesideTitle() const final;

    [[nodiscard]] int RowCount() const final { return static_cast<int>(m_shown.size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const final;

    void Arrange();
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
    CTree m_list;
    CLabel m_count;
    RowOrder m_order;
    std::vector<int> m_shown;  // numbers of source rows
};

}  // namespace brennvar
