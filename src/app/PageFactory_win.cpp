#include "app/PageFactory_win.h"

#include <utility>
#include <vector>

#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/ResourceIds.h"
#include "rules/ApplicationRules.h"
#include "views/ApplicationsPage_win.h"
#include "views/ConnectionsPage_win.h"
#include "views/OptionsPage_win.h"
#include "views/StatisticsPage_win.h"

namespace brennvar {

std::unique_ptr<CPage> PageFactory::Make(const PageInfo& info) const {
    const Language& language = m_parts.language;
    PageTexts texts{.title = language.GetText(info.caption), .line = language.GetText(info.line), .empty = {}};
    switch (info.command) {
        case IDM_STATISTICS: return MakeStatistics(std::move(texts));
        case IDM_CONNECTIONS: return MakeConnections(std::move(texts));
        case IDM_APPLICATIONS: return MakeApplications(std::move(texts));
        case IDM_OPTIONS: return MakeOptions(std::move(texts));
        default:
            texts.empty = language.GetText(1044, "This page has nothing to show yet.");
            return std::make_unique<CPage>(m_parts.fonts, std::move(texts));
    }
}

std::unique_ptr<CPage> PageFactory::MakeStatistics(PageTexts texts) const {
    return std::make_unique<StatisticsPage>(m_parts.fonts, m_parts.language, std::move(texts), m_parts.statistics);
}

ListPageContext PageFactory::Lists() const {
    return {.fonts = m_parts.fonts, .language = m_parts.language, .userValues = m_parts.userValues};
}

std::unique_ptr<CPage> PageFactory::MakeConnections(PageTexts texts) const {
    return std::make_unique<ConnectionsPage>(
        Lists(), std::move(texts),
        [&reader = m_parts.connections](ConnectionsReader::Done done) { reader.Read(std::move(done)); });
}

std::unique_ptr<CPage> PageFactory::MakeApplications(PageTexts texts) const {
    const auto read = [&reads = m_parts.reads,
                       &clock = m_parts.readsClock](std::function<void(std::vector<ApplicationRow>)> done) {
        reads.Ask<std::vector<ApplicationRow>>(
            [&clock] { return LoadApplicationRules(RulesFilePath(GetDataFolder()), clock); },
            [done = std::move(done)](std::optional<std::vector<ApplicationRow>> rows) {
                done(std::move(rows).value_or(std::vector<ApplicationRow>()));
            });
    };
    return std::make_unique<ApplicationsPage>(
        Lists(), std::move(texts),
        ApplicationsPage::Parts{
            .read = read, .changes = m_parts.applicationChanges, .isServiceMissing = [&link = m_parts.link] {
                return link.Service() == PeerState::Missing;
            }});
}

std::unique_ptr<CPage> PageFactory::MakeOptions(PageTexts texts) const {
    return std::make_unique<OptionsPage>(m_parts.fonts, m_parts.language, std::move(texts),
                                         OptionEditor::Parts{.commander = m_parts.commander,
                                                             .reads = m_parts.reads,
                                                             .options = m_parts.options,
                                                             .userValues = m_parts.userValues,
                                                             .resources = m_parts.resources,
                                                             .clock = m_parts.readsClock});
}

}  // namespace brennvar
