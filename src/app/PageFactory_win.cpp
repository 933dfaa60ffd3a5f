#include "app/PageFactory_win.h"

#include <utility>

#include "config/FileStamp_win.h"
#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/Options.h"
#include "config/ResourceFolders_win.h"
#include "config/ResourceIds.h"
#include "config/Resources_win.h"
#include "rules/ApplicationRules.h"
#include "views/ApplicationsModel.h"
#include "views/ConnectionsModel.h"
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
    return std::make_unique<ListPage>(
        Lists(), std::move(texts),
        std::make_unique<ConnectionsModel>(m_parts.language, m_parts.devices, m_parts.reads, m_parts.link));
}

std::unique_ptr<CPage> PageFactory::MakeApplications(PageTexts texts) const {
    const auto load = [&clock = m_parts.readsClock] {
        return LoadApplicationRules(RulesFilePath(GetDataFolder()), clock);
    };
    return std::make_unique<ListPage>(
        Lists(), std::move(texts),
        std::make_unique<ApplicationsModel>(m_parts.language, m_parts.reads, load, m_parts.applicationChanges,
                                            m_parts.link));
}

std::unique_ptr<CPage> PageFactory::MakeOptions(PageTexts texts) const {
    return std::make_unique<OptionsPage>(
        m_parts.fonts, m_parts.language, std::move(texts),
        OptionsPage::Resources{
            .skins = [] { return ListResourceFolders(SkinsFolderPath(GetInstallationFolder())); },
            .languages = [] { return ListResourceFolders(LanguagesFolderPath(GetInstallationFolder())); },
            .current = CurrentResourceChoice,
            .apply = m_parts.applyResources},
        OptionsPage::Services{
            .readOptions =
                [&reads = m_parts.reads,
                 &clock = m_parts.readsClock](std::function<void(std::optional<OptionValues>)> done) {
                    using Values = std::optional<OptionValues>;
                    reads.Ask<Values>([&clock] { return OptionReader(GetDataFolder(), clock).ReadAll(); },
                                      [done = std::move(done)](std::optional<Values> values) {
                                          done(std::move(values).value_or(std::nullopt));
                                      });
                },
            .stampOptions = [] { return StampOfFile(ConfigFilePath(GetDataFolder())); },
            .checkPassword =
                [&gate = m_parts.gate](HWND owner, std::function<void()> action, std::function<void()> refused) {
                    gate.CheckSecurityPassword(
                        {.owner = owner, .action = std::move(action), .refused = std::move(refused)});
                },
            .send =
                [&link = m_parts.link](std::function<void(CommandPipe&)> batch, std::function<void()> done) {
                    link.Send(std::move(batch), [done = std::move(done)](bool) { done(); });
                },
            .sendProxyPort =
                [&link = m_parts.link](std::uint32_t port, std::function<void()> done) {
                    link.SendToFilter([port](FilterQueue& queue) { queue.FILTER_SET_PROXY_PORT(port); },
                                      [done = std::move(done)](bool) { done(); });
                },
            .userValues = m_parts.userValues});
}

}  // namespace brennvar
