#include "views/ApplicationsPage_win.h"

#include <utility>

#include "ui/ResourceIds.h"

namespace brennvar {

ApplicationsPage::ApplicationsPage(const CFonts& fonts, const Language& language, PageTexts texts, Reader read)
    : CPage(fonts, std::move(texts)), m_language(language), m_read(std::move(read)) {}

void ApplicationsPage::OnCreateContent() {
    const ListColumn columns[] = {{.title = m_language.GetText(1027, "Name"), .width = 200},
                                  {.title = m_language.GetText(1026, "Path"), .width = 240, .takesRoom = true},
                                  {.title = m_language.GetText(1028, "Action"), .width = 80}};
    m_list.Create(Window(), IDC_PAGE_LIST, IDC_LIST_EMPTY, GetLook().fonts.Text(), columns, *this);
    m_list.SetEmptyText(
        m_language.GetText(1019,
                           "There are no application rules yet. A program gets one when your answer to "
                           "its question is remembered."));
}

std::string ApplicationsPage::CellText(int row, int column) const {
    const ApplicationRow& application = m_rows[static_cast<std::size_t>(row)];
    switch (column) {
        case 0: return application.name;
        case 1: return application.path;
        case 2: return ActionText(application.state);
        default: return {};
    }
}

std::string ApplicationsPage::ActionText(ApplicationState action) const {
    switch (action) {
        case ApplicationState::Deny: return m_language.GetText(1, "Deny");
        case ApplicationState::Allow: return m_language.GetText(2, "Allow");
        default: return m_language.GetText(3, "Ask");
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
