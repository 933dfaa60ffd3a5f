// The columns of a list page, and how wide they are.
#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "config/ResourceIds.h"
#include "lists/ListPage_win.h"

namespace brennvar {
namespace {

// Wider than anybody can have wanted.
constexpr std::uint32_t kWidestColumn = 4000;

// A column that takes room keeps enough of it to be read, and be it behind a scroll bar.
constexpr int kLeastRoom = 96;  // pixels at 96 per inch

TreeColumn TreeColumnOf(const ListColumn& column) {
    TreeColumn made{.title = column.title, .width = column.width};
    if (column.takesRoom) made.minimalWidth = kLeastRoom;
    made.isNumber = column.isNumber;
    made.takesRoom = column.takesRoom;
    made.isPath = column.isPath;
    made.yields = column.yields;
    made.longest = column.longest;
    return made;
}

}  // namespace

void ListPage::CreateList() {
    m_columns = m_model->Columns();
    const auto withIcon = std::find_if(m_columns.begin(), m_columns.end(), std::mem_fn(&ListColumn::hasIcon));
    if (withIcon != m_columns.end()) m_iconColumn = static_cast<int>(withIcon - m_columns.begin());
    std::vector<TreeColumn> columns;
    std::transform(m_columns.begin(), m_columns.end(), std::back_inserter(columns), TreeColumnOf);
    m_list = std::make_unique<CListTree>(GetLook().fonts);
    const TreeSetup setup{.parent = Window(), .id = IDC_PAGE_LIST, .selectsMany = true};
    if (!m_list->Create(setup, GetLook(), columns, *this)) throw std::runtime_error("no list");
    ReadWidths();
    if (!m_hasUserWidths) m_list->FitToContent();
}

std::string ListPage::WidthName(std::size_t column) const {
    return m_model->Name() + "Column" + std::to_string(column);
}

void ListPage::ReadWidths() {
    std::vector<int> widths;
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        std::uint32_t width = 0;
        if (!m_context.userValues.ReadUserValue(WidthName(column), width)) return;
        widths.push_back(static_cast<int>(std::min(width, kWidestColumn)));
    }
    m_list->SetColumnWidths(widths);
    m_hasUserWidths = true;
}

void ListPage::WriteWidths() const {
    const std::vector<int> widths = m_list->ColumnWidths();
    for (std::size_t column = 0; column < widths.size(); ++column) {
        m_context.userValues.WriteUserValue(WidthName(column), static_cast<std::uint32_t>(widths[column]));
    }
}

}  // namespace brennvar
