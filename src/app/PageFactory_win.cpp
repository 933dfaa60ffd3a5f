#include "app/PageFactory_win.h"

#include <utility>
#include <vector>

#include "config/FileStamp_win.h"
#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/Options.h"
#include "config/ResourceFolders_win.h"
#include "config/ResourceIds.h"
#include "config/Resources_win.h"
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

std::unique_ptr<CPage> MakeOptions(Session& s, PageTexts texts, const ApplyResources& applyResources) {
    return std::make_unique<OptionsPage>(
        s.fonts, s.language, std::move(texts),
        OptionsPage::Resources{
            .skins = [] { return ListResourceFolders(SkinsFolderPath(GetInstallationFolder())); },
            .languages = [] { return ListResourceFolders(LanguagesFolderPath(GetInstallationFolder())); },
            .current = CurrentResourceChoice,
            .apply = applyResources},
        OptionsPage::Services{
            .readOptions =
                [&reads = s.reads, &clock = s.readsClock](std::function<void(std::optional<OptionValues>)> done) {
                    using Values = std::optional<OptionValues>;
                    reads.Ask<Values>([&clock] { return OptionReader(GetDataFolder(), clock).ReadAll(); },
                                      [done = std::move(done)](std::optional<Values> values) {
                                          done(std::move(values).value_or(std::nullopt));
                                      });
                },
            .stampOptions = [] { return StampOfFile(ConfigFilePath(GetDataFolder())); },
            .checkPassword =
                [&gate = s.gate](HWND, std::function<void()> action, std::function<void()> refused) {
                    gate.Ask(std::move(action), std::move(refused));
                },
            .send =
                [&link = s.link](std::function<void(CommandPipe&)> batch, std::function<void()> done) {
                    link.Send(std::move(batch), [done = std::move(done)](bool) { done(); });
                },
            .sendProxyPort =
                [&commander = s.commander](std::uint32_t port, std::function<void()> done) {
                    commander.SetFilterPort(port, [done = std::move(done)](bool) { done(); });
                },
            .userValues = s.userValues});
}

}  // namespace

std::unique_ptr<CPage> MakePage(const PageInfo& info, Session& session, const ApplyResources& applyResources) {
    const Language& language = session.language;
    const ListPageContext lists{.fonts = session.fonts, .language = language, .userValues = session.userValues};
    PageTexts texts{.title = language.GetText(info.caption), .line = language.GetText(info.line), .empty = {}};
    switch (info.command) {
        case IDM_STATISTICS:
            return std::make_unique<StatisticsPage>(session.fonts, language, std::move(texts), session.statistics);
        case IDM_CONNECTIONS: return MakeConnections(session, lists, std::move(texts));
        case IDM_APPLICATIONS: return MakeApplications(session, lists, std::move(texts));
        case IDM_OPTIONS: return MakeOptions(session, std::move(texts), applyResources);
        default:
            texts.empty = language.GetText(1044, "This page has nothing to show yet.");
            return std::make_unique<CPage>(session.fonts, std::move(texts));
    }
}

}  // namespace brennvar
