// The control center: the main window. It routes commands, ticks and messages; what they mean is decided by the
// page, the session or the question that gets them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ControlCenterTray_win.h"
#include "app/ControlCommands_win.h"
#include "app/FrameDialog_win.h"
#include "app/InstalledResources_win.h"
#include "app/Leaving_win.h"
#include "app/MailWindow_win.h"
#include "app/RuleWindows_win.h"
#include "app/SessionView.h"
#include "app/Session_win.h"
#include "app/StatusLine_win.h"
#include "app/Ticks.h"
#include "app/ToolWindows_win.h"
#include "base/ComOfThread_win.h"
#include "base/Handles_win.h"
#include "lists/PageOwner.h"

namespace brennvar {

class FirewallControlCenterDialog final : public FrameDialog,
                                          private SessionView,
                                          private TickActions,
                                          private PageOwner {
public:
    // The session is borrowed for the life of the dialog. firstMessage: shown over the window when that is there;
    // nothing when empty.
    explicit FirewallControlCenterDialog(Session& session, std::string firstMessage = {});

    // Sent by a second start of the program: the first one comes to the front, and says so (EarlierStarts_win.h).
    [[nodiscard]] static UINT OpenWindowMessage();

    enum class Outcome { Exit, Restart };
    // Shows the window and returns when the user has left the program, or wants it started anew. Throws when the
    // window could not be made.
    [[nodiscard]] Outcome Run();

private:
    void OnInitDialog() override;
    void OnDestroy() override;
    void OnClose() override { TakeAway(); }
    void OnMinimise() override { TakeAway(); }
    void OnCancel() override;  // Esc does not leave the program
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void OnPlaceStatus(const RECT& band) override { m_status.Place(band); }
    void OnHelp() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // The session's view
    [[nodiscard]] bool IsSeen() const override { return FrameDialog::IsSeen(); }
    void ShowTraffic(const std::optional<TrafficIncrease>& increase, std::uint64_t milliseconds) override;
    void ShowService(PeerState state) override { m_status.ShowService(state); }
    void ShowConnections(const std::optional<ConnectionCounts>& counts) override {
        m_status.ShowConnections(counts);
    }
    void ShowMode(const ModeDisplay& display) override;
    void ShowIdleMode(ProtectionMode mode) override { m_tray.Icons().OnIdleMode(mode); }
    void ShowNotice(const TrayNotice& notice) override;
    void BringForward() override { RestoreWindow(); }
    void LeaveProgram() override;

    // The ticks
    void RefreshFigures() override { m_session.RefreshFigures(); }
    void CheckNetwork() override { m_session.machine.CheckNetwork(); }
    void CheckClock() override { m_session.machine.CheckClock(); }
    void AnswerQuestion() override { m_session.prompt.Tick(Window(), m_tools); }
    void FetchNotice() override { m_session.FetchNotice(); }
    void FollowGrip() override { TickGrip(); }

    // The pages' owner
    void OpenPageAt(int command, const std::string& key) override;
    void OpenTool(AddressTool tool, const std::string& hostOrAddress) override {
        m_tools.OpenTool(tool, hostOrAddress);
    }
    void MakeRule(const TrafficFacts& facts) override { m_rules.MakeRule(facts); }
    void Explain(const TrafficFacts& facts) override { m_rules.Explain(facts); }
    void Notify(const std::string& title, const std::string& text) override { m_tray.Notify(title, text); }

    [[nodiscard]] std::vector<PageHost::Entry> PageEntries();
    void OnShown();
    void ShowIcons();
    void ShowWelcomeOnce();
    // Starts and ends those that depend on whether the window is seen, and at first all.
    void SetTimers(bool isFirst);
    // Only the tray menu ends the program.
    void TakeAway();
    // Windows ends the program with the session of the user.
    void OnEndSession();
    void OpenPage(int command);
    void ShowAbout();
    void OpenWebPage(const std::string& address);
    void ExitControlCenter();
    // Something is open or under way, and the program does not start anew in the middle of it.
    [[nodiscard]] bool IsBusy() const;

    // For what the shell does for this thread; only when the window is there, since it takes its time.
    std::optional<ComOfThread> m_com;
    Session& m_session;
    bool m_isShownLater = false;  // OnShown is to come
    Ticks m_ticks{*this};
    UniqueIcon m_bigIcon;
    UniqueIcon m_smallIcon;
    InstalledResources m_resources;
    ControlCommands m_commands;
    MailWindow m_mail;
    ControlCenterTray m_tray;
    StatusLine m_status;
    RuleWindows m_rules;
    ToolWindows m_tools;
    Leaving m_leaving;
    std::string m_wantedRow;  // of the page that is opened next
    const std::string m_firstMessage;
    bool m_isMade = false;
};

}  // namespace brennvar
