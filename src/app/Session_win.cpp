#include "app/Session_win.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "base/FlagWhile.h"
#include "config/Charset.h"
#include "config/FileStamp_win.h"
#include "config/Folders.h"
#include "config/OptionTable.h"
#include "config/Options.h"
#include "rules/AdvancedRuleFile.h"

namespace brennvar {
namespace {

// Reads option 1 of the service's options, each second: a file that has not been written since is not opened. On
// one thread; the pause is the clock's, so that it ends with its thread.
class StoredMode {
public:
    StoredMode(const std::string& dataFolder, Clock& clock)
        : m_path(ConfigFilePath(dataFolder)), m_options(dataFolder, clock), m_clock(clock) {}

    std::optional<ProtectionMode> Read(std::chrono::milliseconds pause) {
        if (pause.count() > 0) (void)m_clock.Sleep(pause);  // cut short, nobody waits for the mode
        const FileStamp stamp = StampOf(m_path);
        if (m_mode && stamp == m_stamp) return m_mode;
        m_mode.reset();
        constexpr std::uint32_t kNotStored = 0xFFFFFFFF;  // or the file cannot be read now
        const std::uint32_t value =
            m_options.ReadOption(static_cast<std::uint32_t>(OptionId::ProtectionMode), kNotStored);
        if (value == kNotStored) return std::nullopt;
        const auto mode = static_cast<ProtectionMode>(value);
        m_stamp = stamp;
        // What has just been written may be written again with the same stamp.
        if (!stamp.IsFresh(m_clock.UtcNow())) m_mode = mode;
        return mode;
    }

private:
    const std::string m_path;
    const OptionReader m_options;
    Clock& m_clock;
    FileStamp m_stamp;
    std::optional<ProtectionMode> m_mode;  // while the stamp stays
};

ProtectionModes::ReadMode ModeReader(const std::string& dataFolder, Clock& clock) {
    // Shared by all readings: each is a copy of this function.
    return [stored = std::make_shared<StoredMode>(dataFolder, clock)](std::chrono::milliseconds pause) {
        return stored->Read(pause);
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
    : m_userSession(surroundings.userSession),
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
      driverReads(PostWhenFinished(kMessageCompletions)),
      passwordReads(PostWhenFinished(kMessageCompletions)),
      passwordClock(passwordReads.Stopping()),
      programQueue(PostWhenFinished(kMessageCompletions)),
      connectionTables(devices, driverReads, clock),
      options(readsClock),
      decisionFiles(dataFolder, readsClock, options),
      commander(link, language),
      password(dataFolder, passwordClock),
      gate(fonts, language, commander, passwordReads, password),
      modes(clock, language, commander, reads, ModeReader(dataFolder, readsClock), *this),
      network(commander),
      applicationChanges(commander),
      archives(PostWhenFinished(kMessageCompletions)),
      archivesClock(archives.Stopping()),
      ruleDialogs(fonts, language),
      ruleChoices({.tables = connectionTables,
                   .reads = driverReads,
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
      topPrograms({.tables = connectionTables,
                   .reads = driverReads,
                   .link = link,
                   .programQueue = programQueue,
                   .programFiles = programFiles},
                  language.GetText(313, "no process associated"), statistics),
      prompt(m_frontDevices, clock, PostWhenFinished(kMessageQuestion)),
      activity(dataFolder, clock, *this, PostWhenFinished(kMessageQuestion)),
      machine(clock, language, commander, surroundings.addresses),
      workers{CWorkerThread(PostWhenFinished(kMessageWorkerFinished)),
              CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 1)),
              CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 2)),
              CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 3))},
      m_figures(clock, devices, connectionTables, link, modes, statistics),
      m_front(
          // Not behind the files, which may be held for seconds.
          driverReads,
          [&userSession = m_userSession](const FrontRequest& request) {
              FrontReading reading;
              // Before the look: a change after it is told.
              reading.isTold = request.toTell && userSession.TellChangesTo(request.toTell);
              reading.isInFront = userSession.IsInFront();
              return std::optional(reading);
          },
          [this](std::optional<FrontReading> reading, const FrontRequest&) { OnFront(reading); }) {
    commander.GuardWith(gate);
}

// Before the members go that their tasks use. This may take as long as the disk or the driver does; the program has
// an EndWatch over it.
Session::~Session() {
    constexpr std::chrono::milliseconds kNoTime{0};
    End();
    activity.Stop();  // a command that it waits for is not sent any more
    StopLinks(kNoTime);
    link.Stop(kNoTime);
    for (TaskThread* const thread : FileThreads()) thread->Stop(kNoTime);
}

std::array<TaskThread*, 5> Session::FileThreads() {
    return {&reads, &driverReads, &passwordReads, &programQueue, &archives};
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
    const HWND window = m_window.exchange(nullptr);
    if (window && std::exchange(m_isTold, false)) m_userSession.StopTelling(window);
    m_view = nullptr;
    gate.SetOwner(nullptr);
    ruleDialogs.SetOwner(nullptr);
    ruleEditor.SetOwner(nullptr);
}

void Session::RunCompletions() {
    link.RunCompletions();
    for (TaskThread* const thread : FileThreads()) thread->RunCompletions();
    ruleChoices.RunCompletions();
    network.OnService(link.Service());
    if (m_view) m_view->ShowService(link.Service());
}

void Session::StopLinks(std::chrono::milliseconds limit) {
    // An import is put back, where it is not over; what the service has not been told of is told at the next start.
    rules.Stop();
    link.RequestStop(limit);
    for (TaskThread* const thread : FileThreads()) thread->RequestStop(std::chrono::milliseconds(0));
    ruleChoices.Stop();
}

void Session::RunOverdue() {
    RunCompletions();
    for (CWorkerThread& worker : workers) {
        if (!worker.Running()) worker.Stop();
    }
}

void Session::OnUserSessionChanged() {
    m_frontLookedAt = clock.Elapsed();
    // One request at a time asks for it: a window that is told twice gets each message twice.
    const bool isToBeTold = !m_isTold && !m_front.IsReading();
    m_front.Refresh({.toTell = isToBeTold ? m_window.load() : nullptr});
}

void Session::OnFront(std::optional<FrontReading> reading) {
    m_isInFront = !reading || reading->isInFront;
    if (reading && reading->isTold) m_isTold = true;
}

void Session::RefreshFigures() {
    if (m_view && (!m_frontLookedAt || clock.Elapsed() - *m_frontLookedAt >= kFrontLookAnyway)) {
        OnUserSessionChanged();
    }
    if (m_view) m_figures.Tick(*m_view);
}

void Session::FetchNotice() {
    if (!m_isInFront) return;
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
    // One that was under way when another user's session came to the front is found on the page.
    if (m_isInFront || notice.kind != TrayNotice::Kind::Balloon) m_view->ShowNotice(notice);
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
