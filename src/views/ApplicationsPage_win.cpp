#include "views/ApplicationsPage_win.h"

#include <utility>

namespace brennvar {

ApplicationsPage::ApplicationsPage(const ListPageContext& context, PageTexts texts, Reader read)
    : ListPage(context, std::move(texts), "Applications"), m_read(std::move(read)) {}

ListPage::Content ApplicationsPage::DescribeList() const {
    const Language& language = GetLanguage();
    return {
        .columns = {{.title = language.GetText(1027, "Name"), .width = 200},
                    {.title = language.GetText(1026, "Path"), .width = 240, .takesRoom = true},
                    {.title = language.GetText(1028, "Action"), .width = 80}},
        .emptyText = language.GetText(1019,
                                      "There are no application rules yet. A program gets one when your answer to "
                                      "its question is remembered.")};
}

TreeCell ApplicationsPage::SourceCell(int row, int column) const {
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
        case ApplicationState::Deny: return cell(GetLanguage().GetText(1, "Deny"), RGB(165, 14, 44));
        case ApplicationState::Allow: return cell(GetLanguage().GetText(2, "Allow"), RGB(0, 0, 0));
        default: return cell(GetLanguage().GetText(3, "Ask"), RGB(255, 128, 64));
    }
}

void ApplicationsPage::OnRulesChanged() {
    // A hidden page reads them when it is opened.
    if (IsShown()) Reload();
}

void ApplicationsPage::Reload() {
    m_read([this](std::vector<ApplicationRow> rows) { ChangeRows([this, &rows] { m_rows = std::move(rows); }); });
}

}  // namespace brennvar
