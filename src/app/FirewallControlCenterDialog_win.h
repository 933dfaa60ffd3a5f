// The control center: the main window and the owner of everything that lives as long as the program. It routes
// commands, timers and messages; what they mean is decided by the page, the link or the prompt that gets them.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "app/ControlCenterTray_win.h"
#include "app/ControlCommands_win.h"
#include "app/FrameDialog_win.h"
#include "app/Leaving_win.h"
#include "app/MachineWatch_win.h"
#include "app/PageFactory_win.h"
#include "app/StatusLine_win.h"
#include "base/Refreshed.h"
#include "base/StopSignal.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "commands/Commander.h"
#include "commands/ProtectionModes.h"
#include "config/Charset.h"
#include "config/Language.h"
#include "config/ResourceChoice.h"
#include "config/Resources_win.h"
#include "config/UserValues_win.h"
#include "ipc/Device_win.h"
#include "ipc/Pipe_win.h"
#include "ipc/ServiceLink.h"
#include "prompts/ConnectionPrompt.h"
#include "prompts/PromptWorld_win.h"
#include "security/SecurityPasswordGate_win.h"
#include "statistics/Statistics.h"
#include "statistics/TrafficMeter.h"
#include "ui/Fonts_win.h"
#include "ui/WorkerThread.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

class FirewallControlCenterDialog final : public FrameDialog {
public:
    // The clock is borrowed for the life of the dialog.
    explicit FirewallControlCenterDialog(Clock& clock);

    // Broadcast by a second start of the program: the first one comes to the front.
    [[nodiscard]] static UINT OpenWindowMessage();

    enum class Outcome { Exit, Restart };
    // Shows the window and returns when the user has left the program, or wants it started anew.
    [[nodiscard]] Outcome Run();

private:
    static constexpr std::size_t kWorkerCount = 4;

    void OnInitDialog() override;
    void OnDestroy() override;
    void OnClose() override { TakeAway(); }
    void OnMinimise() override { TakeAway(); }
    void OnCancel() override {}  // Esc does not leave the program
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void OnPlaceStatus(const RECT& band) override { m_status.Place(band); }
    void OnHelp() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    [[nodiscard]] std::vector<PageHost::Entry> PageEntries();
    void ShowWelcomeOnce();
    // Only the tray menu ends the program.
    void TakeAway();
    // Windows ends the program with the session.
    void OnEndSession();
    void SendStartCommands();
    void StartTimers();
    // A hidden or minimised window has no corner to be sized by, and ten ticks a second cost more than all others.
    void RestGripWhileAway();

    // One per timer.
    void RefreshStatistics();
    void CountConnections();
    void AnswerPendingQuestion();
    void FetchTrayNotice();

    void RunCompletions();
    [[nodiscard]] PromptAnswer AskUser(const PromptQuestion& question);
    void OnTrayText(const std::string& text);
    void OnWorkerFinished(std::size_t index) { m_workers[index].Stop(); }
    [[nodiscard]] bool AnyWorkerRunning() const;

    [[nodiscard]] ProtectionModes::Parts ModeParts();
    void ShowMode();
    void OpenPage(int command);
    void ShowAbout();
    void OpenWebPage(const std::string& address);
    void ExitControlCenter();
    // The user's choice of skin and language. False: not while the user is asked about leaving.
    bool ApplyResources(const ResourceChoice& current, const ResourceChoice& chosen);
    [[nodiscard]] bool IsBusy() const;

    [[nodiscard]] std::function<void()> PostWhenFinished(UINT message);

    // Where other threads post to; null while there is no window.
    std::atomic<HWND> m_postTarget = nullptr;

    StopSignal m_neverStopped;  // waits on this thread are never cut short
    Clock& m_clock;
    WinDeviceOpener m_devices;
    WinUserValues m_userValues;
    Language m_language{nullptr};
    CFonts m_fonts{GetFontCharset(CurrentLanguageName())};
    UniqueIcon m_bigIcon;
    UniqueIcon m_smallIcon;

    // A connection question stays on this thread, with its pipes.
    WinPipeConnector m_promptConnector{m_neverStopped};
    WinPromptWorld m_promptWorld;
    ConnectionPromptService m_prompts{m_devices, m_promptWorld};

    ServiceLink m_link;
    MachineWatch m_machine{m_clock, m_language, m_link};
    // Reads files and the driver's tables, which the service may hold or which may be large.
    TaskThread m_reads;
    SystemClock m_readsClock{m_reads.Stopping()};
    Refreshed<std::size_t> m_connectionCount{
        m_reads, [&devices = m_devices](const auto&) { return CountConnectionRows(devices); },
        [this](std::optional<std::size_t> count, const auto&) {
            m_statistics.SetConnections(count);
            m_status.ShowConnections(count);
        }};
    std::optional<PageFactory> m_pageFactory;           // made when the language is known
    std::array<CWorkerThread, kWorkerCount> m_workers;  // long jobs: filling a log list, exporting a log
    SecurityPasswordGate m_gate{
        {.fonts = m_fonts, .language = m_language, .link = m_link, .reads = m_reads, .readsClock = m_readsClock}};
    ControlCommands m_commands{
        {.fonts = m_fonts, .language = m_language, .link = m_link, .gate = m_gate, .clock = m_clock}};
    // The gate as the commander wants it.
    class PasswordAsker final : public AskPassword {
    public:
        explicit PasswordAsker(FirewallControlCenterDialog& dialog) : m_dialog(dialog) {}
        void Ask(std::function<void()> allowed, std::function<void()> refused) override {
            m_dialog.m_gate.CheckSecurityPassword(
                {.owner = m_dialog.Window(), .action = std::move(allowed), .refused = std::move(refused)});
        }

    private:
        FirewallControlCenterDialog& m_dialog;
    };
    PasswordAsker m_passwordAsker{*this};
    Commander m_commander{m_link, m_language};
    ApplicationChanges m_applicationChanges{m_commander};
    ProtectionModes m_modes{ModeParts()};
    ControlCenterTray m_tray{{.fonts = m_fonts,
                              .language = m_language,
                              .openLink = [this](const std::string& link) { OpenWebPage(link); }}};
    StatusLine m_status{m_language};
    Leaving m_leaving{{.fonts = m_fonts,
                       .language = m_language,
                       .tray = m_tray,
                       .gate = m_gate,
                       .link = m_link,
                       .reads = m_reads,
                       .clock = m_clock}};

    TrafficMeter m_meter;
    std::chrono::steady_clock::time_point m_lastMeterTick{};  // when the meter last got totals
    Statistics m_statistics;
    unsigned m_statisticsTicks = 0;  // while the window is seen
    bool m_isFetchingTrayText = false;
    bool m_isHandlingTrayText = false;
    bool m_isGripResting = false;
};

}  // namespace brennvar
