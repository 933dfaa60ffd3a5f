#include "app/PageFactory_win.h"

#include <utility>
#include <vector>

#include "advanced/AdvancedModel.h"
#include "base/TemporaryFolder_win.h"
#include "config/Folders.h"
#include "config/ResourceIds.h"
#include "lists/ListPage_win.h"
#include "rules/ApplicationRules.h"
#include "views/ApplicationsModel.h"
#include "views/ConnectionsModel.h"
#include "views/OptionsPage_win.h"
#include "views/ServiceListFiles_win.h"
#include "views/StatisticsPage_win.h"
#include "views/TrafficLogModel.h"

namespace brennvar {

std::unique_ptr<CPage> MakePage(const PageInfo& info, Session& session, SkinsAndLanguages& resources,
                                PageOwner& owner, MailForms& mail) {
    const Language& language = session.language;
    const ListPageContext lists{
        .fonts = session.fonts, .language = language, .userValues = session.userValues, .owner = owner};
    PageTexts texts{.title = language.GetText(info.caption), .line = language.GetText(info.line)};
    switch (info.command) {
        case IDM_CONNECTIONS:
            return std::make_unique<ListPage>(
                lists, std::move(texts),
                std::make_unique<ConnectionsModel>(ConnectionsModel::Parts{.language = language,
                                                                           .tables = session.connectionTables,
                                                                           .reads = session.reads,
                                                                           .driverReads = session.driverReads,
                                                                           .clock = session.clock,
                                                                           .link = session.link,
                                                                           .programQueue = session.programQueue,
                                                                           .programFiles = session.programFiles,
                                                                           .commander = session.commander,
                                                                           .options = session.options,
                                                                           .userValues = session.userValues,
                                                                           .lookups = session.lookups,
                                                                           .blocked = session.blocked}));
        case IDM_ADVANCED:
            return std::make_unique<ListPage>(
                lists, std::move(texts),
                std::make_unique<AdvancedModel>(AdvancedModel::Parts{.language = language,
                                                                     .rules = session.advancedRules,
                                                                     .exchange = session.rules,
                                                                     .queue = session.archives,
                                                                     .stop = session.archives.Stopping()}));
        case IDM_APPLICATIONS:
            return std::make_unique<ListPage>(
                lists, std::move(texts),
                std::make_unique<ApplicationsModel>(
                    language, session.reads,
                    [&clock = session.readsClock, path = RulesFilePath(session.dataFolder)] {
                        return LoadApplicationRules(path, clock);
                    },
                    session.applicationChanges, session.link, session.rules));
        case IDM_TRAFFIC_LOG:
            return std::make_unique<ListPage>(
                lists, std::move(texts),
                std::make_unique<TrafficLogModel>(TrafficLogModel::Parts{.language = language,
                                                                         .clock = session.clock,
                                                                         .reads = session.reads,
                                                                         .listing = session.workers[0],
                                                                         .writing = session.workers[1],
                                                                         .lookups = session.lookups,
                                                                         .dataFolder = session.dataFolder,
                                                                         .page = session.codePage,
                                                                         .mail = mail,
                                                                         .temporaryFolder = TemporaryFolder()}));
        case IDM_OPTIONS:
            return std::make_unique<OptionsPage>(
                session.fonts, language, std::move(texts),
                OptionEditor::Parts{.commander = session.commander,
                                    .reads = session.reads,
                                    .options = session.options,
                                    .userValues = session.userValues,
                                    .resources = resources,
                                    .clock = session.clock},
                OptionLists::Sources{.trusted = TrustedFile(session.dataFolder, session.readsClock),
                                     .sites = SitesFile(session.dataFolder, session.readsClock)});
        default:  // the statistics
            return std::make_unique<StatisticsPage>(session.fonts, language, std::move(texts), session.statistics,
                                                    session.clock);
    }
}

}  // namespace brennvar
