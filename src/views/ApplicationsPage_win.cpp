#include "views/ApplicationsPage_win.h"

#include <stdexcept>
#include <utility>

#include "ui/ResourceIds.h"

namespace brennvar {

ApplicationsPage::ApplicationsPage(const CFonts& fonts, const Language& language, PageTexts texts, Reader read)
    : CPage(fonts, std::move(texts)), m_language(language), m_read(std::move(read)) {}

void ApplicationsPage::OnCreateContent() {
    const TreeColumn columns[] = {{.title = m_language.GetText(1027, "Name"), .width = 200},
                                  {.title = m_language.GetText(1026, "Path"), .width = 240, .takesRoom = true},
                                  {.title = m_language.GetText(1028, "Action"), .width = 80}};
    const std::string emptyText =
        m_language.GetText(1019,
                           "There are no application rules yet. A program gets one when your answer to "
                           "its question is remembered.");
    const TreeSetup setup{.parent = Window(), .id = IDC_PAGE_LIST, .emptyText = emptyText};
    if (!m_list.Create(setup, GetLook(), columns, *this)) throw std::runtime_error("no list");
}

TreeCell ApplicationsPage::Cell(int row, int column) const {
    const ApplicationRow& application = m_rows[static_cast<std::size_t>(row)];
    TreeCell cell;
    switch (column) {
        case 0: cell.text = application.name; break;
        case 1: cell.text = application.path; break;
        case 2: return ActionCell(application.state);
        default: break;
    }
    return cell;
}

TreeCell ApplicationsPage::ActionCell(ApplicationState action) const {
    const auto cell = [](std::string text, COLORREF colour) {
        TreeCell made;
        made.text = std::move(text);
        made.textColour = colour;
        made.onPill = true;
        return made;
    };
    switch (action) {
        case ApplicationState::Deny: return cell(m_language.GetText(1, "Deny"), RGB(165, 14, 44));
        case ApplicationState::Allow: return cell(m_language.GetText(2, "Allow"), RGB(0, 0, 0));
        default: return cell(m_language.GetText(3, "Ask"), RGB(255, 128, 64));
    }
}

void ApplicationsPage::OnRulesChanged() {
    // A hidden page reads them when it is opened.
    if (IsShown()) Reload();
}

void ApplicationsPage::Reload() {
    m_read([this](std::vector<ApplicationRow> rows) { OnRead(std::move(rows)); });
}

void ApplicationsPage::OnRead(std::vector<ApplicationRow> rows) {
    std::string selectedPath;
    if (const int row = m_list.SelectedRow(); row >= 0) selectedPath = m_rows[static_cast<std::size_t>(row)].path;
    m_rows = std::move(rows);
    int newRow = -1;
    for (std::size_t row = 0; !selectedPath.empty() && row < m_rows.size(); ++row) {
        if (m_rows[row].path != selectedPath) continue;
        newRow = static_cast<int>(row);
        break;
    }
    m_list.Refresh();
    m_list.SelectRow(newRow);
}

}  // namespace brennvar
