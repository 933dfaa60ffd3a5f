#include "prompts/FactSources_win.h"

#include <utility>

#include "base/ComOfThread_win.h"
#include "base/NetworkAddresses_win.h"
#include "base/VersionInfo_win.h"
#include "config/Charset.h"
#include "config/Folders.h"
#include "config/IniSnapshot_win.h"
#include "config/Ini_win.h"
#include "config/Settings.h"
#include "prompts/FactsGatherer.h"
#include "prompts/QuestionIcon_win.h"
#include "rules/ApplicationRules.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// Nobody waits longer for a path than FactsGatherer does, and the next question's rule is looked up on the same
// thread: so the usual patience with the service is cut to that time.
constexpr PipePolicy kPathPolicy{.attempts = 5, .wait = 200ms, .pause = 200ms, .pendingLimit = 600ms};
static_assert(kPathPolicy.attempts * (kPathPolicy.wait + kPathPolicy.pause) <= FactsGatherer::kPathLimit);

}  // namespace

WinFactSources::WinFactSources(std::string dataFolder, std::string installationFolder, PipeConnector& connector,
                               Clock& waits, const StopSignal& stop)
    : m_dataFolder(dataFolder),
      m_lookups(dataFolder, stop),
      m_programs(std::move(dataFolder), std::move(installationFolder)),
      m_waits(waits),
      m_pipes(connector, waits, kPathPolicy) {}

std::optional<std::string> WinFactSources::ResolveProcessPath(std::uint32_t processId) {
    return m_pipes.ResolveProcessPath(processId);
}

RuleAction WinFactSources::LookupAction(const std::string& path) {
    return LookupApplicationAction(RulesFilePath(m_dataFolder), m_waits, path);
}

std::optional<ProgramVersion> WinProgramSources::Version(const std::string& path) {
    return FindProgramVersion(path);
}

std::shared_ptr<const QuestionIcon> WinProgramSources::Icon(const std::string& path) {
    thread_local const ComOfThread com;
    return std::make_shared<QuestionIcon>(QuestionIcon{FindIconOfProgram(path, IconSize::Large)});
}

QuestionWords WinProgramSources::LoadWords() {
    const std::string name = ReadLanguageName(CIni(SettingsFilePath(m_dataFolder)));
    QuestionWords words{
        .language = Language(std::make_unique<CIniSnapshot>(LanguageFilePath(m_installationFolder, name))),
        .charset = GetFontCharset(name)};
    (void)words.language.GetText(
        444, "Confirm network connection");  // reads the file here, and not where the question is put into words
    return words;
}

Ipv4 WinFactSources::LocalAddressFor(Ipv4 address) {
    return FindLocalAddressFor(address);
}

std::string WinFactSources::HostName(LocalDate day, Ipv4 address) {
    return m_lookups.HostName(day, address);
}

std::optional<std::uint32_t> WinFactSources::Advice(const std::string& path) {
    return m_lookups.Advice(path);
}

}  // namespace brennvar
