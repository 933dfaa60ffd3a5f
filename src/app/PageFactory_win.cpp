#include "app/PageFactory_win.h"

#include <utility>
#include <vector>

#include "config/Folders.h"
#include "config/ResourceIds.h"
#include "rules/ApplicationRules.h"
#include "views/ApplicationsPage_win.h"
#include "views/ConnectionsPage_win.h"
#include "views/OptionsPage_win.h"
#include "views/StatisticsPage_win.h"

namespace brennvar {

namespace {

std::unique_ptr<CPage> MakeConnections(Session& s, const ListPageContext& lists, PageTexts texts) {
    return std::make_unique<ConnectionsPage>(
        lists, std::move(texts),
        [&reader = s.connections](ConnectionsReader::Done done) { reader.Read(std::move(done)); });
}

std::unique_ptr<CPage> MakeApplications(Session& s, const ListPageContext& lists, PageTexts texts) {
    const auto read = [&reads = s.reads, &clock = s.readsClock,
                       path = RulesFilePath(s.dataFolder)](std::function<void(std::vector<ApplicationRow>)> done) {
        reads.Ask<std::vector<ApplicationRow>>(
            [&clock, path] { return LoadApplicationRules(path, clock); },
            [done = std::move(done)](std::optional<std::vector<ApplicationRow>> rows) {
                done(std::move(rows).value_or(std::vector<ApplicationRow>()));
            });
    };
    return std::make_unique<ApplicationsPage>(
        lists, std::move(texts),
        ApplicationsPage::Parts{
            .read = read, .changes = s.applicationChanges, .isServiceMissing = [&link = s.link] {
                return link.Service() == PeerState::Missing;
            }});
}

}  // namespace

std::unique_ptr<CPage> MakePage(const PageInfo& info, Session& session, SkinsAndLanguages& resources) {
    const Language& language = session.language;
    const ListPageContext lists{.fonts = session.fonts, .language = language, .userValues = session.userValues};
    PageTexts texts{.title = language.GetText(info.caption), .line = language.GetText(info.line), .empty = {}};
    switch (info.command) {
        case IDM_STATISTICS:
            return std::make_unique<StatisticsPage>(session.fonts, language, std::move(texts), session.statistics);
        case IDM_CONNECTIONS: return MakeConnections(session, lists, std::move(texts));
        case IDM_APPLICATIONS: return MakeApplications(session, lists, std::move(texts));
        case IDM_OPTIONS:
            return std::make_unique<OptionsPage>(session.fonts, language, std::move(texts),
                                                 OptionEditor::Parts{.commander = session.commander,
                                                                     .reads = session.reads,
                                                                     .options = session.options,
                                                                     .userValues = session.userValues,
                                                                     .resources = resources,
                                                                     .clock = session.clock});
        default:
            texts.empty = language.GetText(1044, "This page has nothing to show yet.");
            return std::make_unique<CPage>(session.fonts, std::move(texts));
    }
}

}  // namespace brennvar
