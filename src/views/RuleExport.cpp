// The export of rules, the shorter half of the exchange.
#include "dialogs/WriteFailure.h"
#include "views/RuleExchange.h"

namespace brennvar {

struct RuleExchange::Exported {
    enum class What { Written, IsThere, NoRules, Failed, Stopped };
    What what = What::Written;
    WriteResult result = WriteResult::Written;
};

void RuleExchange::Export(RuleSet set) {
    if (!BeginFlow()) return;
    m_parts.commander.AskFor(UserCommand::ExportRules, m_alive.Guard([this, set] { AskWhereToExport(set); }),
                             m_alive.Guard([this] { EndFlow(); }));
}

void RuleExchange::AskWhereToExport(RuleSet set) {
    const Language& language = m_parts.language;
    const auto chosen = m_parts.dialogs.AskSavePath(
        {.title = language.GetText(1831, "Export the rules"),
         .name = InfoOf(set).name,
         .types = {{.label = language.GetText(1833, "Rule archives"), .extension = "fxz"}},
         .asksToReplace = false});
    const auto path = chosen ? ArchivePathOf(*chosen) : std::nullopt;
    if (chosen && !path) Tell(language.GetText(132, "Please enter file name."));
    if (!path) return EndFlow();
    WriteArchive(set, *path, false);
}

void RuleExchange::WriteArchive(RuleSet set, const std::string& path, bool mayReplace) {
    using What = Exported::What;
    SetWork(Work::Exporting);
    m_parts.queue.Ask<Exported>(
        [&files = m_parts.files, &clock = m_parts.clock, set, path, mayReplace, stop = m_stop,
         source = m_parts.folders.rules + '/' + std::string(InfoOf(set).entry)]() -> Exported {
            if (!mayReplace && !files.IsMissing(path)) return {.what = What::IsThere};
            const auto rules = ReadWhenFree(files, clock, source);
            if (!rules.content) return {.what = rules.isMissing ? What::NoRules : What::Failed};
            ArchiveWriter archive;
            if (!archive.AddFile(std::string(InfoOf(set).entry), *rules.content, Packing::Deflated)) {
                return {.what = What::Failed};
            }
            const auto bytes = archive.Close();
            if (stop->Requested()) return {.what = What::Stopped};
            const WriteResult result = bytes ? files.Write(path, *bytes) : WriteResult::Failed;
            return {.what = result == WriteResult::Written ? What::Written : What::Failed, .result = result};
        },
        m_alive.Guard(
            [this, set, path](const std::optional<Exported>& exported) { OnExported(set, path, exported); }));
}

void RuleExchange::OnExported(RuleSet set, const std::string& path, const std::optional<Exported>& exported) {
    using What = Exported::What;
    const Language& language = m_parts.language;
    SetWork(Work::None);
    switch (exported ? exported->what : What::Failed) {
        case What::IsThere:
            if (m_parts.dialogs.Ask(language.GetText(1834, "This file exists already. Replace it?") + '\n' + path,
                                    language.GetText(1835, "Replace"), RuleDialogs::Otherwise::Cancel)) {
                return WriteArchive(set, path, true);
            }
            break;
        case What::NoRules: Tell(language.GetText(1838, "There are no rules to export yet.")); break;
        case What::Failed:
            if (!exported || exported->result == WriteResult::Written) {
                Tell(language.GetText(1847, "The rules are held by the service at the moment. Please try again."));
            } else {
                Tell(DescribeWriteFailure(exported->result, path, language));
            }
            break;
        case What::Stopped: break;
        case What::Written: OfferMail(path); break;
    }
    EndFlow();
}

void RuleExchange::OfferMail(const std::string& path) {
    const Language& language = m_parts.language;
    const std::string text = language.GetText(1836, "The rules have been exported to this file:") + '\n' + path;
    if (!m_mail) return Tell(text);
    if (!m_parts.dialogs.Ask(text, language.GetText(1837, "Mail..."), RuleDialogs::Otherwise::Close)) return;
    m_mail->OpenMailForm({.path = path,
                          .name = path.substr(path.find_last_of("\\/:") + 1),
                          .contentType = "application/zip",
                          .subject = language.GetText(1839, "Rules of the firewall")});
}

}  // namespace brennvar
