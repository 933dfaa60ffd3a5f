#include "app/FirewallControlCenterDialog_win.h"

#include <stdexcept>
#include <utility>

#include "app/AboutDialog_win.h"
#include "app/EarlierStarts_win.h"
#include "app/HelperProgram_win.h"
#include "app/PageFactory_win.h"
#include "base/Detached.h"
#include "base/Processes_win.h"
#include "base/ShellOpen_win.h"
#include "config/Folders_win.h"
#include "config/ResourceIds.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "tray/TrayMenu.h"
#include "ui/ProgramIcon_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// Private messages of the window, beside those of the session.
constexpr UINT kMessageShown = WM_APP + 2;
constexpr UINT kMessageTray = WM_APP + 10;  // 0x800A

constexpr int kFirstPage = IDM_STATISTICS;

constexpr char kHelpPage[] = "https://www.brennvar.example/help/index.php";
constexpr char kSupportPage[] = "https://www.brennvar.example/support/index.php";

constexpr INT_PTR kResultExit = 0;
constexpr INT_PTR kResultRestart = 1;

void WriteProcessIds(UserValues& userValues) {
    const std::vector<std::uint32_t> ids = FindProcessIds({"brennvar.exe", "brennvargui.exe"});
    userValues.WriteUserValue(kUserValueServerPid, ids[0]);
    userValues.WriteUserValue(kUserValueGuiPid, ids[1]);
}

}  // namespace

UINT FirewallControlCenterDialog::OpenWindowMessage() {
    static const UINT message = ::RegisterWindowMessageA("BrennvarGUI.OpenWindow");
    return message;
}

FirewallControlCenterDialog::FirewallControlCenterDialog(Session& session, std::string firstMessage)
    : FrameDialog(session.fonts, session.language, session.userValues),
      m_session(session),
      m_resources([this](const ResourceChoice& current, const ResourceChoice& chosen, std::function<void()> lost) {
          return m_leaving.ApplyResources(Window(), current, chosen,
                                          {.isBusy = [this] { return IsBusy(); },
                                           .lost = std::move(lost),
                                           .end = [this] { End(kResultRestart); }});
      }),
      m_commands(session, [this] { Pages().OnLogsDeleted(); }),
      m_mail(session),
      m_tray(session.fonts, session.language, session.clock,
             [this](const std::string& link) { OpenWebPage(link); }),
      m_status(session.language),
      m_rules(session, *this),
      m_tools(session.fonts, session.language, m_rules, [this](const std::string& link) { OpenWebPage(link); }),
      m_leaving(session, m_tray, m_tools, m_rules),
      m_firstMessage(std::move(firstMessage)) {}

FirewallControlCenterDialog::Outcome FirewallControlCenterDialog::Run() {
    const INT_PTR result = DoModal(nullptr, IDD_CONTROL_CENTER);
    if (!m_isMade) throw std::runtime_error("The window could not be made.");
    return result == kResultRestart ? Outcome::Restart : Outcome::Exit;
}

void FirewallControlCenterDialog::OnInitDialog() {
    CreateFrame(m_session.language.GetText(41, "Brennvar Personal Firewall"), PageEntries());
    m_status.Create(Texts(), GetLook());
    RestorePlace();
    m_tools.Attach(Window());
    m_rules.Attach(Window());
    m_mail.SetWindow(Window());
    m_session.rules.SendWith(&m_mail);
    Pages().Open(kFirstPage);
    SetFirstFocus(kFirstPage);

    SetTimers(true);
    // What the user does not wait for comes when the window is there: the threads of the session, the icon, and the
    // first look at the driver, not only after a second. The first page asks nobody for anything.
    m_isShownLater = true;
    ::PostMessageA(Window(), kMessageShown, 0, 0);
    ::PostMessageA(Window(), WM_TIMER, Ticks::Table().front().timer, 0);
    // Windows would keep it from us when that start has fewer rights than this one.
    ::ChangeWindowMessageFilterEx(Window(), OpenWindowMessage(), MSGFLT_ALLOW, nullptr);
    m_isMade = true;
}

void FirewallControlCenterDialog::OnDestroy() {
    FrameDialog::OnDestroy();
    m_tools.Attach(nullptr);
    m_rules.Attach(nullptr);
    m_session.End();
    m_session.rules.SendWith(nullptr);
    m_mail.SetWindow(nullptr);
    for (const TickInfo& tick : Ticks::Table()) ::KillTimer(Window(), tick.timer);
}

void FirewallControlCenterDialog::ShowIcons() {
    m_bigIcon = LoadShield(IconSize::Large);
    m_smallIcon = LoadShield(IconSize::Small);
    ::SendMessageA(Window(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(m_bigIcon.Get()));
    ::SendMessageA(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_smallIcon.Get()));
}

std::vector<PageHost::Entry> FirewallControlCenterDialog::PageEntries() {
    const Language& language = m_session.language;
    std::vector<PageHost::Entry> entries;
    for (const PageInfo& info : PageList()) {
        entries.push_back(
            {.command = info.command, .caption = language.GetText(info.caption), .make = [this, &info] {
                 return MakePage(info, m_session, m_resources, *this, m_mail);
             }});
    }
    entries.push_back({.command = IDM_SUPPORT, .caption = language.GetText(1045, "Support"), .make = {}});
    entries.push_back({.command = IDM_ABOUT, .caption = language.GetText(52, "About"), .make = {}});
    return entries;
}

void FirewallControlCenterDialog::OnTimer(UINT_PTR id) {
    // Of two questions neither waits for the other, and that about a connection holds its tick.
    m_session.activity.Tick(Window());
    m_leaving.Tick();
    // Outside of the tick, which goes on while a dialog of a completion is open.
    if (id == Ticks::Table().front().timer) m_session.RunOverdue();
    m_ticks.OnTimer(static_cast<unsigned>(id));
}

void FirewallControlCenterDialog::OnShown() {
    if (!std::exchange(m_isShownLater, false)) return;  // said by somebody else
    ShowIcons();
    m_session.Begin(Window(), *this);
    // Nobody waits for them, and all processes have to be gone through.
    m_session.reads.Post([&values = m_session.userValues] { WriteProcessIds(values); });
    m_com.emplace();
    m_tray.Create(Window(), kMessageTray, m_session.modes, m_session.network);
    (void)RunDetached([] { EnsureHelperRuns(GetInstallationFolder()); });
    ShowWelcomeOnce();
    if (!m_firstMessage.empty()) {
        ShowMessage(m_session.fonts, m_session.language, ModalOwner(Window()).value_or(Window()), m_firstMessage);
    }
}

void FirewallControlCenterDialog::ShowWelcomeOnce() {
    std::uint32_t shown = 0;
    if (m_session.userValues.ReadUserValue(kUserValueFirstRun, shown) && shown != 0) return;
    m_tray.ShowWelcome();
    m_session.userValues.WriteUserValue(kUserValueFirstRun, 1);
}

void FirewallControlCenterDialog::SetTimers(bool isFirst) {
    for (const TickInfo& tick : Ticks::Table()) {
        if (!m_ticks.IsWanted(tick)) {
            ::KillTimer(Window(), tick.timer);
        } else if (tick.onlyWhileSeen || isFirst) {
            ::SetTimer(Window(), tick.timer, static_cast<UINT>(tick.period.count()), nullptr);
        }
    }
}

void FirewallControlCenterDialog::ShowTraffic(const std::optional<TrafficIncrease>& increase,
                                              std::uint64_t milliseconds) {
    m_status.ShowTraffic(increase, milliseconds);
    if (increase) m_tray.Icons().OnTraffic(*increase);
}

void FirewallControlCenterDialog::ShowMode(const ModeDisplay& display) {
    m_status.ShowMode(display, m_session.clock.UtcNow());
}

void FirewallControlCenterDialog::ShowNotice(const TrayNotice& notice) {
    if (notice.kind == TrayNotice::Kind::Refresh) Pages().OnRulesChanged();
    if (notice.kind == TrayNotice::Kind::Balloon) m_tray.ShowNotice(notice);
}

void FirewallControlCenterDialog::OnCommand(int id, int notification) {
    // A menu sends 0, and so does a button that is pressed; everything else is a button's focus and the like.
    if (notification != BN_CLICKED) return;
    switch (id) {
        case IDM_OPEN: RestoreWindow(); break;
        case IDM_EXIT: ExitControlCenter(); break;
        case IDC_STATUS_MODE: m_status.OpenModeMenu(); break;
        case IDM_SUPPORT: OpenWebPage(kSupportPage); break;
        case IDM_APPLICATION_ASK:
        case IDM_APPLICATION_ALLOW:
        case IDM_APPLICATION_DENY:
        case IDM_APPLICATION_REMOVE: m_session.applicationChanges.Carry(); break;
        case IDM_ABOUT:
        case IDC_CAPTION_ABOUT: ShowAbout(); break;
        case IDM_TRAFFIC_LOG:
            // The jobs fill and export the very lists of this page.
            if (!m_session.IsAnyWorkerRunning()) OpenPage(id);
            break;
        default:
            if (const auto change = ModeChangeOf(id)) {
                m_session.modes.Change(*change);
            } else if (!m_commands.OnCommand(Window(), id) && !m_tools.OnCommand(id) && !m_rules.OnCommand(id) &&
                       !m_mail.OnCommand(id) && !OnFrameCommand(id) && Pages().HasPage(id)) {
                OpenPage(id);
            }
            break;
    }
}

void FirewallControlCenterDialog::OpenPage(int command) {
    // The page first, so that a window that comes back does not show another one before.
    Pages().Open(command);
    RestoreWindow();
    const std::string row = std::exchange(m_wantedRow, {});
    // The page that was shown may have stayed.
    if (!row.empty() && Pages().CurrentCommand() == command) Pages().Current()->ShowRow(row);
}

void FirewallControlCenterDialog::OpenPageAt(int command, const std::string& key) {
    m_wantedRow = key;
    ::PostMessageA(Window(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void FirewallControlCenterDialog::OnCancel() {
    if (CPage* const page = Pages().Current()) page->OnEscape();
}

void FirewallControlCenterDialog::ShowAbout() {
    // The tray can ask for it while another dialog is open, which has to be answered first.
    if (::IsWindowEnabled(Window())) AboutDialog(m_session.fonts, m_session.language).Show(Window());
}

void FirewallControlCenterDialog::OnHelp() {
    OpenWebPage(kHelpPage);
}

void FirewallControlCenterDialog::OpenWebPage(const std::string& address) {
    OpenInBrowser(address);
}

std::optional<LRESULT> FirewallControlCenterDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr UINT kFinished = Session::kMessageWorkerFinished;
    if (message >= kFinished && message < kFinished + Session::kWorkerCount) {
        // Anybody can say so; a job that is not over would be waited for.
        CWorkerThread& worker = m_session.workers[message - kFinished];
        if (!worker.Running()) worker.Stop();
        return 0;
    }
    if (message == OpenWindowMessage()) {
        // A window that is leaving does not come back: whoever called waits for the end of this process.
        if (m_leaving.HasLeftScreen()) return 0;
        RestoreWindow();
        return WinEarlierStarts::kHasOpened;
    }
    switch (message) {
        case kMessageShown: OnShown(); return 0;
        case Session::kMessageCompletions: m_session.RunCompletions(); return 0;
        case Session::kMessageQuestion:
            m_session.activity.Tick(Window());
            AnswerQuestion();
            return 0;
        case kMessageTray: m_tray.OnNotification(static_cast<UINT>(wParam), static_cast<UINT>(lParam)); return 0;
        case WM_WINDOWPOSCHANGED:
            if (m_ticks.SetSeen(IsSeen())) SetTimers(false);
            return FrameDialog::OnMessage(message, wParam, lParam);
        case WM_ENABLE:
            if (::IsWindowEnabled(Window())) m_mail.OnEnabled();
            return FrameDialog::OnMessage(message, wParam, lParam);
        case WM_ENDSESSION:
            if (m_session.IsUserSessionEnding(wParam != FALSE)) OnEndSession();
            return 0;
        case WM_POWERBROADCAST:
            // A screen may have been taken away while the machine slept.
            if (wParam == PBT_APMRESUMEAUTOMATIC) BringOntoScreens();
            return TRUE;
        case WM_DISPLAYCHANGE: BringOntoScreens(); return FrameDialog::OnMessage(message, wParam, lParam);
        case WM_SETTINGCHANGE:
            if (wParam == SPI_SETWORKAREA) BringOntoScreens();
            return FrameDialog::OnMessage(message, wParam, lParam);
        case WM_WTSSESSION_CHANGE: m_session.OnUserSessionChanged(); return 0;
        default: return FrameDialog::OnMessage(message, wParam, lParam);
    }
}

bool FirewallControlCenterDialog::IsBusy() const {
    // A modal dialog over this window keeps it disabled.
    return m_session.IsPromptOpen() || m_session.IsTellingNotice() || m_session.IsAtWork() || m_tools.IsAnyOpen() ||
           !::IsWindowEnabled(Window());
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

void FirewallControlCenterDialog::LeaveProgram() {
    m_tray.Leave();
    // Ends every loop of this thread, whatever is open.
    ::PostQuitMessage(0);
}

void FirewallControlCenterDialog::ExitControlCenter() {
    // The password cannot be asked for a second time. Before the questions: their answers would be for nothing.
    if (m_session.gate.IsAsking()) return m_session.gate.ComeForward();
    // The driver waits for the answer to an open question; it comes first, and says so by coming forward.
    if (m_session.prompt.IsBusy()) {
        if (const HWND question = StandingQuestion()) ::SetForegroundWindow(question);
        return;
    }
    if (m_mail.IsSending()) return m_mail.TellSending();
    if (CPage* const page = Pages().Current(); page && !page->MayLeave()) return;
    m_leaving.Exit(
        Window(), [this] { return m_session.prompt.IsBusy() || m_session.IsAtWork() || m_mail.IsSending(); },
        [this] { End(kResultExit); });
}

}  // namespace brennvar
