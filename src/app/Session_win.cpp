#include "app/Session_win.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/FlagWhile.h"
#include "config/Charset.h"
#include "config/Folders.h"
#include "config/OptionTable.h"
#include "config/Options.h"
#include "rules/AdvancedRuleFile.h"

namespace brennvar {
namespace {

// Reads option 1 of the service's options; the pause is the clock's, so that it ends with its thread.
ProtectionModes::ReadMode ModeReader(const std::string& dataFolder, Clock& clock) {
    return [options = OptionReader(dataFolder, clock), &clock](std::chrono::milliseconds pause) {
        if (pause.count() > 0) (void)clock.Sleep(pause);  // cut short, nobody waits for the mode
        return std::optional(
            ProtectionModeOf(options.ReadOption(static_cast<std::uint32_t>(OptionId::ProtectionMode), 0)));
    };
}

// The pause is the clock's, as above.
AdvancedRules::Load AdvancedRulesLoader(const std::string& dataFolder, Clock& clock) {
    return [path = AdvancedRulesFilePath(dataFolder), &clock](std::chrono::milliseconds pause) {
        if (pause.count() > 0) (void)clock.Sleep(pause);
        return LoadAdvancedRules(path, clock);
    };
}

}  // namespace

Session::Session(const SessionSurroundings& surroundings, Language openedLanguage)
    : m_isUserSessionEnding(surroundings.isUserSessionEnding),
      clock(surroundings.clock),
      devices(surroundings.devices),
      userValues(surroundings.userValues),
      dataFolder(surroundings.dataFolder),
      language(std::move(openedLanguage)),
      fonts(GetFontCharset(surroundings.languageName)),
      codePage(CodePageOf(surroundings.languageName)),
      link(PostWhenFinished(kMessageCompletions), surroundings.makeConnector),
      reads(PostWhenFinished(kMessageCompletions)),
      readsClock(reads.Stopping()),
      lookups(surroundings.dataFolder, reads.Stopping()),
      programQueue(PostWhenFinished(kMessageCompletions)),
      options(readsClock),
      decisionFiles(dataFolder, readsClock, options),
      commander(link, language),
      password(dataFolder, readsClock),
      gate(fonts, language, commander, reads, password),
      modes(clock, language, commander, reads, ModeReader(dataFolder, readsClock), *this),
      applicationChanges(commander),
      archives(PostWhenFinished(kMessageCompletions)),
      archivesClock(archives.Stopping()),
      ruleDialogs(fonts, language),
      ruleChoices({.devices = devices,
                   .reads = reads,
                   .clock = readsClock,
                   .link = link,
                   .programQueue = programQueue,
                   .programFiles = programFiles},
                  PostWhenFinished(kMessageCompletions)),
      ruleEditor({.fonts = fonts, .language = language, .choices = ruleChoices, .clock = clock}),
      advancedRules({.language = language,
                     .clock = clock,
                     .reads = reads,
                     .load = AdvancedRulesLoader(dataFolder, readsClock),
                     .commander = commander,
                     .editor = ruleEditor,
                     .dialogs = ruleDialogs}),
      rules({.language = language,
             .queue = archives,
             .clock = archivesClock,
             .commander = commander,
             .dialogs = ruleDialogs,
             .advanced = advancedRules,
             .files = ruleFiles,
             .folders = RuleFoldersOf(dataFolder)}),
      prompt(fonts, devices, clock, PostWhenFinished(kMessageQuestion)),
      activity(fonts, dataFolder, clock, *this, PostWhenFinished(kMessageQuestion)),
      machine(clock, language, commander, surroundings.readAddresses),
      workers{CWorkerThread(PostWhenFinished(kMessageWorkerFinished)),
              CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 1)),
              CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 2)),
              CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 3))},
      m_figures(clock, devices, reads, link, modes, statistics) {
    commander.GuardWith(gate);
}

// Before the members go that their tasks use.
Session::~Session() {
    End();
    activity.Stop();  // a command that it waits for is not sent any more
    StopLinks(std::chrono::milliseconds(0));
}

std::function<void()> Session::PostWhenFinished(UINT message) {
    return [this, message] {
        if (const HWND window = m_window) ::PostMessageA(window, message, 0, 0);
    };
}

void Session::Begin(HWND window, SessionView& view) {
    m_window = window;
    m_view = &view;
    gate.SetOwner(window);
    ruleDialogs.SetOwner(window);
    ruleEditor.SetOwner(window);
    rules.Begin();
    commander.Send(Batch(UserCommand::Start));
    activity.Start();
}

void Session::End() {
    m_window = nullptr;
    m_view = nullptr;
    gate.SetOwner(nullptr);
    ruleDialogs.SetOwner(nullptr);
    ruleEditor.SetOwner(nullptr);
}

void Session::RunCompletions() {
    link.RunCompletions();
    reads.RunCompletions();
    programQueue.RunCompletions();
    archives.RunCompletions();
    ruleChoices.RunCompletions();
    if (m_view) m_view->ShowService(link.Service());
}

void Session::StopLinks(std::chrono::milliseconds limit) {
    // An import is put back, where it is not over; what the service has not been told of is told at the next start.
    rules.Stop();
    link.Stop(limit);
    reads.Stop(std::chrono::milliseconds(0));
    programQueue.Stop(std::chrono::milliseconds(0));
    archives.Stop(std::chrono::milliseconds(0));
    ruleChoices.Stop();
}

void Session::RefreshFigures() {
    // The messages that ask for this are lost when others have filled the queue.
    RunCompletions();
    for (CWorkerThread& worker : workers) {
        if (!worker.Running()) worker.Stop();
    }
    if (m_view) m_figures.Tick(*m_view);
}

void Session::FetchNotice() {
    if (m_isFetchingNotice) return;
    using Notice = std::optional<std::string>;
    link.Ask<Notice>([](ServicePipes& pipes) { return pipes.FetchTrayText(); },
                     [this](const std::optional<Notice>& text) {
                         m_isFetchingNotice = false;
                         if (text && *text) OnNotice(**text);
                     });
    m_isFetchingNotice = true;
}

void Session::TrustProgram(const std::string& path, std::function<void()> over) {
    commander.Send(Batch(UserCommand::TrustProgram, {.path = path}), [over = std::move(over)](bool) { over(); });
}

void Session::BringForward() {
    if (m_view) m_view->BringForward();
}

void Session::LeaveProgram() {
    if (m_view) m_view->LeaveProgram();
}

void Session::OnNotice(const std::string& text) {
    if (!m_view) return;
    const FlagWhile telling(m_isTellingNotice);
    const TrayNotice notice = ParseTrayNotice(text);
    if (notice.kind == TrayNotice::Kind::Attack) statistics.CountAttack();
    if (notice.kind == TrayNotice::Kind::Balloon) statistics.AddNotice(notice.text, clock.UtcNow());
    m_view->ShowNotice(notice);
}

void Session::OnModeChanged() {
    if (m_view) m_figures.ShowMode(*m_view);
}

void Session::OnIdleMode(ProtectionMode mode) {
    if (m_view) m_view->ShowIdleMode(mode);
}

bool Session::IsAnyWorkerRunning() const {
    return std::any_of(workers.begin(), workers.end(), [](const auto& worker) { return worker.Running(); });
}

}  // namespace brennvar
