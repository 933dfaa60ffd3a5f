#include "app/FirewallControlCenterDialog_win.h"

#include <shlobj.h>

#include <algorithm>
#include <utility>

#include "app/AboutDialog_win.h"
#include "app/ModeLink_win.h"
#include "base/Processes_win.h"
#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/ResourceIds.h"
#include "ipc/DriverTables.h"
#include "prompts/ConfirmationDialog_win.h"
#include "tray/TrayMenu.h"
#include "tray/TrayNotice.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

// Private messages of the window.
constexpr UINT kMessageLinkCompletions = WM_APP + 1;
constexpr UINT kMessageShown = WM_APP + 2;
constexpr UINT kMessageTray = WM_APP + 10;     // 0x800A
constexpr UINT kMessageWorkerFinished = 4846;  // to 4849, one per worker thread

struct Timer {
    UINT_PTR id;
    UINT period;  // ms
};
constexpr Timer kStatisticsTimer{1, 1000};
constexpr Timer kNetworkTimer{2, 1000};
constexpr Timer kClockTimer{3, 1000};
constexpr Timer kPromptTimer{4, 100};
constexpr Timer kTrayTextTimer{5, 1000};
constexpr Timer kGripTimer{6, 100};
constexpr Timer kTimers[] = {kStatisticsTimer, kNetworkTimer,  kClockTimer,
                             kPromptTimer,     kTrayTextTimer, kGripTimer};

constexpr int kFirstPage = IDM_STATISTICS;

constexpr char kHelpPage[] = "https://www.brennvar.example/help/index.php";
constexpr char kSupportPage[] = "https://www.brennvar.example/support/index.php";

constexpr unsigned kTicksPerCount = 2;  // as often as the Connections page reads them

constexpr INT_PTR kResultExit = 0;
constexpr INT_PTR kResultRestart = 1;

}  // namespace

UINT FirewallControlCenterDialog::OpenWindowMessage() {
    static const UINT message = ::RegisterWindowMessageA("BrennvarGUI.OpenWindow");
    return message;
}

FirewallControlCenterDialog::FirewallControlCenterDialog(Clock& clock)
    : FrameDialog(m_fonts, m_language, m_userValues),
      m_clock(clock),
      m_promptWorld(
          GetDataFolder(), GetInstallationFolder(), m_promptConnector, m_clock,
          [this](const PromptQuestion& question) { return AskUser(question); },
          [this] { return m_link.Service(); }),
      m_link(PostWhenFinished(kMessageLinkCompletions),
             [](const StopSignal& stop) { return std::make_unique<WinPipeConnector>(stop); }),
      m_reads(PostWhenFinished(kMessageLinkCompletions)),
      m_workers{CWorkerThread(PostWhenFinished(kMessageWorkerFinished)),
                CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 1)),
                CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 2)),
                CWorkerThread(PostWhenFinished(kMessageWorkerFinished + 3))} {
    EnableDebugPrivilege();  // without it the paths of some processes stay unknown
    // With the folders above it; one that is there already is left as it is.
    const std::string logFolder = LogFolderPath(GetDataFolder());
    if (::GetFileAttributesA(logFolder.c_str()) == INVALID_FILE_ATTRIBUTES) {
        ::SHCreateDirectoryExA(nullptr, logFolder.c_str(), nullptr);
    }
    m_language = OpenLanguage();
    const std::vector<std::uint32_t> ids = FindProcessIds({"brennvar.exe", "brennvargui.exe"});
    m_userValues.WriteUserValue(kUserValueServerPid, ids[0]);
    m_userValues.WriteUserValue(kUserValueGuiPid, ids[1]);
}

FirewallControlCenterDialog::Outcome FirewallControlCenterDialog::Run() {
    const INT_PTR result = DoModal(nullptr, IDD_CONTROL_CENTER);
    // Before the members go that their tasks use.
    m_link.Stop(std::chrono::milliseconds(0));
    m_reads.Stop(std::chrono::milliseconds(0));
    return result == kResultRestart ? Outcome::Restart : Outcome::Exit;
}

std::function<void()> FirewallControlCenterDialog::PostWhenFinished(UINT message) {
    return [this, message] {
        if (const HWND target = m_postTarget) ::PostMessageA(target, message, 0, 0);
    };
}

void FirewallControlCenterDialog::OnInitDialog() {
    m_postTarget = Window();
    m_bigIcon = LoadShield(IconSize::Large);
    m_smallIcon = LoadShield(IconSize::Small);
    ::SendMessageA(Window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(m_bigIcon.Get()));
    ::SendMessageA(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_smallIcon.Get()));

    m_commander.GuardWith(m_passwordAsker);
    m_pageFactory.emplace(
        PageFactory::Parts{.fonts = m_fonts,
                           .language = m_language,
                           .userValues = m_userValues,
                           .link = m_link,
                           .gate = m_gate,
                           .reads = m_reads,
                           .readsClock = m_readsClock,
                           .devices = m_devices,
                           .statistics = m_statistics,
                           .applicationChanges = m_applicationChanges,
                           .applyResources = [this](const ResourceChoice& current, const ResourceChoice& chosen) {
                               return ApplyResources(current, chosen);
                           }});
    CreateFrame(m_language.GetText(41, "Brennvar Personal Firewall"), PageEntries());
    m_status.Create(Window(), GetLook());
    RestorePlace();
    SendStartCommands();  // before the page asks the service for anything
    Pages().Open(kFirstPage);
    SetFirstFocus(kFirstPage);

    StartTimers();
    // What the user does not wait for comes when the window is there: the icon, and the first look at the driver,
    // not only after a second.
    ::PostMessageA(Window(), kMessageShown, 0, 0);
    ::PostMessageA(Window(), WM_TIMER, kStatisticsTimer.id, 0);
}

void FirewallControlCenterDialog::OnDestroy() {
    FrameDialog::OnDestroy();
    m_postTarget = nullptr;
    for (const Timer& timer : kTimers) ::KillTimer(Window(), timer.id);
}

std::vector<PageHost::Entry> FirewallControlCenterDialog::PageEntries() {
    std::vector<PageHost::Entry> entries;
    for (const PageInfo& info : PageList()) {
        entries.push_back({.command = info.command,
                           .caption = m_language.GetText(info.caption),
                           .make = [this, &info] { return m_pageFactory->Make(info); }});
    }
    entries.push_back({.command = IDM_SUPPORT, .caption = m_language.GetText(1045, "Support"), .make = {}});
    entries.push_back({.command = IDM_ABOUT, .caption = m_language.GetText(52, "About"), .make = {}});
    return entries;
}

void FirewallControlCenterDialog::ShowWelcomeOnce() {
    std::uint32_t shown = 0;
    if (m_userValues.ReadUserValue(kUserValueFirstRun, shown) && shown != 0) return;
    m_tray.ShowWelcome();
    m_userValues.WriteUserValue(kUserValueFirstRun, 1);
}

void FirewallControlCenterDialog::SendStartCommands() {
    m_link.Send([](CommandPipe& pipe) { pipe.CMD_SET_RUN_STATE(1); });
    m_link.Send([](CommandPipe& pipe) { pipe.CMD_RELOAD_APPLICATION_RULES(); });
    m_link.Send([](CommandPipe& pipe) { pipe.CMD_SET_VALUE_10(0); });
}

void FirewallControlCenterDialog::StartTimers() {
    for (const Timer& timer : kTimers) ::SetTimer(Window(), timer.id, timer.period, nullptr);
}

void FirewallControlCenterDialog::RestGripWhileAway() {
    const bool isAway = !::IsWindowVisible(Window()) || ::IsIconic(Window());
    if (std::exchange(m_isGripResting, isAway) == isAway) return;
    if (isAway) {
        ::KillTimer(Window(), kGripTimer.id);
    } else {
        ::SetTimer(Window(), kGripTimer.id, kGripTimer.period, nullptr);
    }
}

void FirewallControlCenterDialog::OnTimer(UINT_PTR id) {
    switch (id) {
        case kStatisticsTimer.id: RefreshStatistics(); break;
        case kNetworkTimer.id: m_machine.CheckNetwork(); break;
        case kClockTimer.id: m_machine.CheckClock(); break;
        case kPromptTimer.id: AnswerPendingQuestion(); break;
        case kTrayTextTimer.id: FetchTrayNotice(); break;
        case kGripTimer.id: TickGrip(); break;
        default: break;  // a tick may still come after its timer has gone
    }
}

void FirewallControlCenterDialog::RefreshStatistics() {
    std::optional<TrafficIncrease> increase;
    std::uint64_t elapsed = 0;  // ms
    if (const std::optional<TrafficTotals> totals = ReadTrafficTotals(m_devices)) {
        increase = m_meter.Tick(*totals);
        // What flowed while the driver could not be read is not one second's burst.
        const auto now = std::chrono::steady_clock::now();
        elapsed = static_cast<std::uint64_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(now - m_lastMeterTick).count());
        m_lastMeterTick = now;
    }
    m_statistics.Tick(increase, elapsed);
    m_status.ShowTraffic(increase, elapsed);
    m_status.ShowService(m_link.Service());
    if (increase) m_tray.Icons().OnTraffic(*increase);
    const bool isIdle = increase == TrafficIncrease();
    // While traffic flows, or while the driver cannot tell, the mode is only looked at.
    if (isIdle || IsSeen()) m_modes.Tick(isIdle);
    ShowMode();  // the time that is left
    CountConnections();
}

void FirewallControlCenterDialog::CountConnections() {
    // Large tables take the driver a while; nobody sees the number while the window is away.
    if (!IsSeen() || m_connectionCount.IsReading() || m_statisticsTicks++ % kTicksPerCount != 0) return;
    m_connectionCount.Refresh();
}

void FirewallControlCenterDialog::FetchTrayNotice() {
    if (m_isFetchingTrayText) return;
    m_isFetchingTrayText = true;
    using TrayText = std::optional<std::string>;
    m_link.Ask<TrayText>([](ServicePipes& pipes) { return pipes.FetchTrayText(); },
                         [this](const std::optional<TrayText>& text) {
                             m_isFetchingTrayText = false;
                             if (text && *text) OnTrayText(**text);
                         });
}

void FirewallControlCenterDialog::RunCompletions() {
    m_link.RunCompletions();
    m_reads.RunCompletions();
    m_status.ShowService(m_link.Service());
}

void FirewallControlCenterDialog::AnswerPendingQuestion() {
    // Ticks that come while a question is on screen do nothing. A cycle that has answered may have waited for the
    // service with this thread, which must not look like a jump of the clock.
    if (m_prompts.RunCycle() == PromptCycle::Answered) m_machine.SkipNextClockCheck();
}

PromptAnswer FirewallControlCenterDialog::AskUser(const PromptQuestion& question) {
    return ConfirmationDialog(m_fonts, question).Ask(Window());
}

void FirewallControlCenterDialog::OnTrayText(const std::string& text) {
    m_isHandlingTrayText = true;
    const TrayNotice notice = ParseTrayNotice(text);
    switch (notice.kind) {
        case TrayNotice::Kind::Refresh: Pages().OnRulesChanged(); break;
        case TrayNotice::Kind::Attack: m_statistics.CountAttack(); break;
        case TrayNotice::Kind::Balloon:
            m_statistics.AddNotice(notice.text, m_clock.UtcNow());
            m_tray.ShowNotice(notice);
            break;
    }
    m_isHandlingTrayText = false;
}

void FirewallControlCenterDialog::OnCommand(int id, int notification) {
    // A menu sends 0, and so does a button that is pressed; everything else is a button's focus and the like.
    if (notification != BN_CLICKED) return;
    switch (id) {
        case IDM_OPEN: RestoreWindow(); break;
        case IDM_EXIT: ExitControlCenter(); break;
        case IDM_SUPPORT: OpenWebPage(kSupportPage); break;
        case IDM_APPLICATION_ASK:
        case IDM_APPLICATION_ALLOW:
        case IDM_APPLICATION_DENY:
        case IDM_APPLICATION_REMOVE: m_applicationChanges.Carry(); break;
        case IDM_ABOUT:
        case IDC_CAPTION_ABOUT: ShowAbout(); break;
        case IDM_TRAFFIC_LOG:
            // The jobs fill and export the very lists of this page.
            if (!AnyWorkerRunning()) OpenPage(id);
            break;
        default:
            if (const auto change = ModeChangeOf(id)) {
                m_modes.Change(*change);
            } else if (!m_commands.OnCommand(Window(), id) && !OnFrameCommand(id) && Pages().HasPage(id)) {
                OpenPage(id);
            }
            break;
    }
}

ProtectionModes::Parts FirewallControlCenterDialog::ModeParts() {
    ProtectionModes::Parts parts = ConnectModes(m_clock, m_language, m_link, m_reads, m_readsClock);
    parts.checkPassword = [this](std::function<void()> action) {
        m_gate.CheckSecurityPassword({.owner = Window(), .action = std::move(action), .refused = {}});
    };
    parts.changed = [this] { ShowMode(); };
    parts.idleModeRead = [this](ProtectionMode mode) { m_tray.Icons().OnIdleMode(mode); };
    return parts;
}

void FirewallControlCenterDialog::ShowMode() {
    const ModeDisplay& display = m_modes.Display();
    m_status.ShowMode(display.mode, FormatMode(display, m_clock.UtcNow(), m_language));
    m_statistics.SetMode(display);
}

void FirewallControlCenterDialog::OpenPage(int command) {
    // The page first, so that a window that comes back does not show another one before.
    Pages().Open(command);
    RestoreWindow();
}

void FirewallControlCenterDialog::ShowAbout() {
    // The tray can ask for it while another dialog is open, which has to be answered first.
    if (::IsWindowEnabled(Window())) AboutDialog(m_fonts, m_language).Show(Window());
}

void FirewallControlCenterDialog::OnHelp() {
    OpenWebPage(kHelpPage);
}

void FirewallControlCenterDialog::OpenWebPage(const std::string& address) {
    // Starting a browser takes its time.
    m_reads.Post([address] { ::ShellExecuteA(nullptr, "open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL); });
}

std::optional<LRESULT> FirewallControlCenterDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= kMessageWorkerFinished && message < kMessageWorkerFinished + kWorkerCount) {
        OnWorkerFinished(message - kMessageWorkerFinished);
        return 0;
    }
    if (message == OpenWindowMessage()) {
        RestoreWindow();
        return 0;
    }
    switch (message) {
        case kMessageShown:
            m_tray.Create(Window(), kMessageTray,
                          [this](std::function<void(ProtectionMode)> done) { m_modes.Read(std::move(done)); });
            ShowWelcomeOnce();
            return 0;
        case kMessageLinkCompletions: RunCompletions(); return 0;
        case kMessageTray: m_tray.OnNotification(static_cast<UINT>(wParam), static_cast<UINT>(lParam)); return 0;
        case WM_WINDOWPOSCHANGED: RestGripWhileAway(); return FrameDialog::OnMessage(message, wParam, lParam);
        case WM_ENDSESSION:
            if (wParam) OnEndSession();
            return 0;
        case WM_POWERBROADCAST:
            // The clock went on while the machine slept.
            if (wParam == PBT_APMRESUMEAUTOMATIC) m_machine.SkipNextClockCheck();
            return TRUE;
        default: return FrameDialog::OnMessage(message, wParam, lParam);
    }
}

bool FirewallControlCenterDialog::AnyWorkerRunning() const {
    return std::any_of(m_workers.begin(), m_workers.end(), [](const auto& worker) { return worker.Running(); });
}

bool FirewallControlCenterDialog::IsBusy() const {
    // A modal dialog over this window keeps it disabled.
    return m_prompts.IsBusy() || m_isHandlingTrayText || AnyWorkerRunning() || !::IsWindowEnabled(Window());
}

void FirewallControlCenterDialog::TakeAway() {
    // A dialog over the window would stay behind alone.
    if (::IsWindowEnabled(Window())) m_tray.TakeAway();
}

void FirewallControlCenterDialog::OnEndSession() {
    // The service goes on protecting until Windows ends it as well, so it is not told that the interface ends. What
    // comes after this message may not be reached any more.
    FrameDialog::OnDestroy();
    m_tray.Leave();
    End(kResultExit);
}

void FirewallControlCenterDialog::ExitControlCenter() {
    // The driver waits for the answer to an open question; it comes first.
    if (m_prompts.IsBusy()) return;
    // Nor can the password be asked for a second time. Before the questions: their answers would be for nothing.
    if (m_gate.IsAsking()) return m_gate.ComeForward();
    if (CPage* const page = Pages().Current(); page && !page->MayLeave()) return;
    m_leaving.Exit(
        Window(), [this] { return m_prompts.IsBusy() || AnyWorkerRunning(); }, [this] { End(kResultExit); });
}

bool FirewallControlCenterDialog::ApplyResources(const ResourceChoice& current, const ResourceChoice& chosen) {
    const Leaving::Restart restart =
        m_leaving.ApplyResources(Window(), current, chosen, [this] { return IsBusy(); });
    if (restart == Leaving::Restart::Wanted) End(kResultRestart);
    return restart != Leaving::Restart::Refused;
}

}  // namespace brennvar
