// The questions about what programs do to other programs, as the control center has them: the server of the queue
// pipe, the watch over the wallpaper, and the road of their questions (ActivityQuestions) with its threads, sources
// and dialogs. User-interface thread.
#pragma once

#include <functional>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Handles_win.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "ipc/Pipe_win.h"
#include "ipc/RecordPipe_win.h"
#include "prompts/ActivityDesk.h"
#include "prompts/ActivityQuestions.h"
#include "prompts/ActivityServer.h"
#include "prompts/ActivitySources_win.h"
#include "prompts/FactSources_win.h"
#include "prompts/MessageDialogAllowDeny_win.h"
#include "prompts/QuestionFonts_win.h"
#include "prompts/QuestionMessage_win.h"

namespace brennvar {

class ActivityPrompt final : private ActivityAsker {
public:
    // wake, as for TaskThread: Tick is to be called soon. The others are borrowed; the clock keeps the limits.
    ActivityPrompt(const std::string& dataFolder, const Clock& clock, ActivityView& view,
                   std::function<void()> wake);
    ActivityPrompt(const ActivityPrompt&) = delete;
    ActivityPrompt& operator=(const ActivityPrompt&) = delete;
    ~ActivityPrompt() override;

    // The pipe is served and the wallpaper watched from now on.
    void Start();
    // Every 100 ms, and whenever wake says so. Returns at once; a question that it opens keeps owner from input.
    void Tick(HWND owner);
    // A question is looked up or on screen.
    [[nodiscard]] bool IsBusy() const { return m_questions.IsBusy(); }
    // Denies what is asked, gives the answers a moment to arrive, and has the server and the watch end.
    void Stop();

private:
    [[nodiscard]] bool IsReadyToAsk() override { return IsTimeToAsk(); }
    void Open(const ActivityQuestion& question) override;
    [[nodiscard]] std::optional<ActivityAnswer> Answer() override;
    void TakeAway() override;

    void StopServer();

    QuestionFonts m_fonts;
    ActivityView& m_view;
    const std::function<void()> m_wake;
    HWND m_owner = nullptr;  // of the latest tick
    bool m_isStarted = false;
    // Before what they use: that exists until the last of them has stopped.
    TaskThread m_serving;
    TaskThread m_watching;
    TaskThread m_programs;
    TaskThread m_words;
    SystemClock m_servingWaits{m_serving.Stopping()};
    SystemClock m_watchingWaits{m_watching.Stopping()};
    WinPipeConnector m_servingPipes{m_serving.Stopping()};
    WinRecordPipe m_pipe;
    WinActivitySources m_activitySources;
    WinProgramSources m_programSources;
    ActivityDesk m_desk;
    ActivityServer m_server;
    std::promise<void> m_serverEnd;
    const UniqueEvent m_watchStop{::CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    // One of them while a question stands.
    std::unique_ptr<MessageDialogAllowDeny> m_question;
    std::unique_ptr<QuestionMessage> m_message;
    // Those that are over. One of them may be in the middle of a loop of Windows', a menu's or of being moved.
    std::vector<std::unique_ptr<CDialog>> m_gone;
    ActivityQuestions m_questions;
};

}  // namespace brennvar
