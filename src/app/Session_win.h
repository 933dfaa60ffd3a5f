// Everything that lives as long as the program but its window: the links to the service and the driver, what is
// sent and read through them, and what is known because of it. It does what the ticks ask for and tells the window,
// which comes after it and goes before it. User-interface thread only.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "advanced/AdvancedRules.h"
#include "advanced/DecisionFiles.h"
#include "advanced/RuleChoices_win.h"
#include "advanced/RuleEditor_win.h"
#include "app/Figures.h"
#include "app/MachineWatch.h"
#include "app/SessionView.h"
#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "base/UserSession_win.h"
#include "base/Windows_win.h"
#include "commands/BlockedAddresses.h"
#include "commands/Commander.h"
#include "commands/NetworkSwitch.h"
#include "commands/ProtectionModes.h"
#include "config/CodePage.h"
#include "config/Language.h"
#include "config/OptionFile_win.h"
#include "config/UserValues.h"
#include "ipc/Device.h"
#include "ipc/ServiceLink.h"
#include "logs/Lookups.h"
#include "prompts/ActivityPrompt_win.h"
#include "prompts/ConnectionPrompt_win.h"
#include "security/SecurityPasswordGate_win.h"
#include "security/StoredPassword.h"
#include "statistics/Statistics.h"
#include "ui/Fonts_win.h"
#include "ui/WorkerThread.h"
#include "views/ApplicationChanges.h"
#include "views/ConnectionTables.h"
#include "views/ProgramFiles_win.h"
#include "views/RuleDialogs_win.h"
#include "views/RuleExchange.h"
#include "views/TopPrograms.h"

namespace brennvar {

// What a session finds when it begins; all that is referred to is borrowed for its life.
struct SessionSurroundings {
    Clock& clock;  // that the user-interface thread tells the time by
    DeviceOpener& devices;
    ServiceLink::MakeConnector makeConnector;
    OwnAddresses& addresses;
    UserValues& userValues;
    UserSession& userSession;
    std::string dataFolder;
    std::string languageName;  // a folder's; of the fonts' character set
};

class Session final : private ModeView, private ActivityView {
public:
    // Private messages of the window.
    static constexpr UINT kMessageCompletions = WM_APP + 1;  // RunCompletions is to be called
    static constexpr UINT kMessageQuestion =
        WM_APP + 3;  // something of a question has come: prompt.Tick, activity.Tick
    static constexpr UINT kMessageWorkerFinished = 4846;  // to 4849, one per worker thread
    static constexpr std::size_t kWorkerCount = 4;
    // A reading may have been wrong, and a change may have been told while the window was not: so often it is
    // looked again at whether this session is in front.
    static constexpr std::chrono::seconds kFrontLookAnyway{5};

    Session(const SessionSurroundings& surroundings, Language openedLanguage);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    // Cuts short whatever is under way.
    ~Session() override;

    // From now on the window gets the messages above, and the view is told. Sends the start-up commands.
    void Begin(HWND window, SessionView& view);
    // The window goes: nothing is posted to it and the view is told nothing any more.
    void End();
    void RunCompletions();
    // To be called once a second: does what the messages above ask for, which are lost when others have filled the
    // queue. A completion may open a dialog and return when the user has closed it, so no tick may wait for this.
    void RunOverdue();
    // Lets what was sent arrive for at most the given time; afterwards nothing new is sent or read. What is being
    // read is not waited for.
    void StopLinks(std::chrono::milliseconds limit);

    // The ticks.
    // The first one looks at whether this session is in front as well.
    void RefreshFigures();
    // Nothing while another user's session is in front: the notice is for who sits there.
    void FetchNotice();

    // Another session may have come to the front, or this one.
    void OnUserSessionChanged();
    // As far as is known by now.
    [[nodiscard]] bool IsInFront() const { return m_isInFront; }

    // A question is looked up or on screen.
    [[nodiscard]] bool IsPromptOpen() const { return prompt.IsBusy() || activity.IsBusy(); }
    [[nodiscard]] bool IsAnyWorkerRunning() const;
    // Something is under way that the program does not end in the middle of: a worker, rules on their road, or
    // an edited rule that is not sent yet.
    [[nodiscard]] bool IsAtWork() const {
        return IsAnyWorkerRunning() || rules.Current() != RuleExchange::Work::None || advancedRules.IsSaving();
    }
    // isTold: the window got WM_ENDSESSION with TRUE. True when the system ends the session of the user, and all
    // programs with it; a program that only says so does not end the firewall's window.
    [[nodiscard]] bool IsUserSessionEnding(bool isTold) const { return isTold && m_userSession.IsEnding(); }
    // A notice is being told.
    [[nodiscard]] bool IsTellingNotice() const { return m_isTellingNotice; }

private:
    void OnModeChanged() override;
    void OnIdleMode(ProtectionMode mode) override;
    void OnNotice(const std::string& text);
    // A look at whether this session is in front. It waits for the terminal services, so another thread does it.
    struct FrontRequest {
        HWND toTell = nullptr;  // of changes; null: nobody
    };
    struct FrontReading {
        bool isInFront = true;
        bool isTold = false;
    };
    void OnFront(std::optional<FrontReading> reading);
    void TrustProgram(const std::string& path, std::function<void()> over) override;
    void BringForward() override;
    void LeaveProgram() override;
    [[nodiscard]] std::function<void()> PostWhenFinished(UINT message);
    // Those beside the link whose completions are run with its own.
    [[nodiscard]] std::array<TaskThread*, 5> FileThreads();

    // Where other threads post to; null while there is no window.
    std::atomic<HWND> m_window = nullptr;
    SessionView* m_view = nullptr;
    bool m_isFetchingNotice = false;
    bool m_isTellingNotice = false;
    UserSession& m_userSession;
    bool m_isInFront = true;
    bool m_isTold = false;                                     // the window, of changes
    std::optional<std::chrono::milliseconds> m_frontLookedAt;  // by the clock's Elapsed

    // The driver as questions are fetched from it: it has none while another user's session is in front.
    class FrontDevices final : public DeviceOpener {
    public:
        explicit FrontDevices(Session& session) : m_session(session) {}
        [[nodiscard]] std::unique_ptr<Device> Open(const std::string& name) override {
            return m_session.m_isInFront ? m_session.devices.Open(name) : nullptr;
        }

    private:
        Session& m_session;
    };
    FrontDevices m_frontDevices{*this};

public:
    // In the order in which they are made; each uses those above it.
    Clock& clock;
    DeviceOpener& devices;
    UserValues& userValues;
    const std::string dataFolder;
    const Language language;
    const CFonts fonts;
    const CodePage codePage;  // of the language's texts
    ServiceLink link;
    // Reads files, which the service may hold or which may be large.
    TaskThread reads;
    SystemClock readsClock;
    LogLookups lookups;  // for pages; asked on reads only, until that is stopped
    // Reads the driver's tables, and makes of them what is shown.
    TaskThread driverReads;
    // Reads the security password, before which a protected command stands: "Block All" waits for no list.
    TaskThread passwordReads;
    SystemClock passwordClock;
    // Looks into program files, for which a disk may take minutes.
    const DiskProgramFiles programFiles;
    TaskThread programQueue;
    ConnectionTables connectionTables;
    const OptionFile options;
    const DecisionFiles decisionFiles;  // on reads only
    BlockedAddresses blocked;
    Commander commander;
    const StoredPassword password;
    SecurityPasswordGate gate;
    ProtectionModes modes;
    NetworkSwitch network;
    ApplicationChanges applicationChanges;
    // Archives of rules, which may be long, and for which the service's files are waited for.
    TaskThread archives;
    SystemClock archivesClock;
    DiskRuleFiles ruleFiles;
    WinRuleDialogs ruleDialogs;
    WinRuleChoices ruleChoices;
    WinRuleEditor ruleEditor;
    AdvancedRules advancedRules;
    RuleExchange rules;
    Statistics statistics{AmountWords(language)};
    TopPrograms topPrograms;
    ConnectionPrompt prompt;
    ActivityPrompt activity;
    MachineWatch machine;
    std::array<CWorkerThread, kWorkerCount> workers;  // long jobs: filling a log list, exporting a log

private:
    Figures m_figures;
    Refreshed<FrontReading, FrontRequest> m_front;
};

}  // namespace brennvar
