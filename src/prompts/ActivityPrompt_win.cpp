#include "prompts/ActivityPrompt_win.h"

#include <chrono>
#include <utility>

#include "config/Folders.h"
#include "config/Folders_win.h"
#include "ipc/PipeWriteOnce.h"
#include "prompts/WallpaperValue_win.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// For the client of the moment to read its answer; a client that does not must not hold the exit up.
constexpr auto kStopPatience = 2000ms;
// Of each of the calls that are to wake the server, which may have a client.
constexpr PipePolicy kWakePolicy{.attempts = 1, .wait = 50ms, .pause = 0ms, .pendingLimit = 50ms};

// Tells that the server has ended, in whatever way.
class ServerEnd {
public:
    explicit ServerEnd(std::promise<void>& end) : m_end(end) {}
    ServerEnd(const ServerEnd&) = delete;
    ServerEnd& operator=(const ServerEnd&) = delete;
    ~ServerEnd() { m_end.set_value(); }

private:
    std::promise<void>& m_end;
};

}  // namespace

ActivityPrompt::ActivityPrompt(const std::string& dataFolder, const Clock& clock, ActivityView& view,
                               std::function<void()> wake)
    : m_view(view),
      m_wake(std::move(wake)),
      m_serving(m_wake),
      m_watching(m_wake),
      m_programs(m_wake),
      m_words(m_wake),
      m_pipe(kActivityPipeName, sizeof(ActivityQueueMessage)),
      m_activitySources(TrustedFilePath(dataFolder), m_servingPipes, m_servingWaits),
      m_programSources(dataFolder, GetInstallationFolder()),
      m_desk(m_wake),
      m_server(m_pipe, m_activitySources, m_desk, m_servingWaits),
      m_questions(m_desk, m_programSources, {.programs = m_programs, .words = m_words}, *this, clock) {}

ActivityPrompt::~ActivityPrompt() {
    Stop();
    for (TaskThread* const thread : {&m_serving, &m_watching, &m_programs, &m_words}) thread->Stop(0ms);
}

void ActivityPrompt::Start() {
    if (std::exchange(m_isStarted, true)) return;
    m_serving.Post([this] {
        const ServerEnd end(m_serverEnd);
        m_server.Run();
    });
    m_watching.Post([this] {
        WinWallpaperValue value(m_watchStop.Get());
        WallpaperWatch(value, m_desk, m_watchingWaits).Run();
    });
}

void ActivityPrompt::Tick(HWND owner) {
    m_owner = owner;
    if (!m_gone.empty() && IsTimeToAsk()) m_gone.clear();
    for (TaskThread* const thread : {&m_programs, &m_words}) thread->RunCompletions();
    m_desk.RunOrders(m_view);
    m_questions.Tick();
}

void ActivityPrompt::Stop() {
    m_server.RequestStop();
    m_questions.Stop();
    ::SetEvent(m_watchStop.Get());
    if (std::exchange(m_isStarted, false)) StopServer();
    // Nobody is waited for here: the last commands are still to be sent.
    for (TaskThread* const thread : {&m_serving, &m_watching}) thread->RequestStop(0ms);
}

void ActivityPrompt::StopServer() {
    // The server looks whether to stop when a client has gone, so one is sent. It may have to wait for its turn,
    // and somebody else may have the pipe.
    ActivityQueueMessage call{};
    call.kind = ActivityKind::Wake;
    SystemClock clock(m_serving.Stopping());
    const std::future<void> end = m_serverEnd.get_future();
    const auto start = std::chrono::steady_clock::now();
    while (end.wait_for(0ms) != std::future_status::ready &&
           std::chrono::steady_clock::now() - start < kStopPatience) {
        PipeWriteOnce(m_servingPipes, clock, kActivityPipeName, RecordBytes(call), kWakePolicy);
        (void)end.wait_for(20ms);
    }
    m_pipe.Stop();
}

void ActivityPrompt::Open(const ActivityQuestion& question) {
    if (question.isMessage) {
        m_message = std::make_unique<QuestionMessage>(m_fonts.For(question.charset),
                                                      MessageTexts{.caption = question.caption,
                                                                   .message = question.body,
                                                                   .ok = question.allowButton,
                                                                   .cancel = question.denyButton,
                                                                   .isCancelDefault = true,
                                                                   .sign = MessageSign::Question},
                                                      m_wake);
        m_message->Open(m_owner);
    } else {
        m_question = std::make_unique<MessageDialogAllowDeny>(m_fonts.For(question.charset), question);
        m_question->Open(m_owner, m_wake);
    }
}

std::optional<ActivityAnswer> ActivityPrompt::Answer() {
    if (m_question) {
        const std::optional<PromptAnswer> given = m_question->Given();
        if (!given) return std::nullopt;
        return ActivityAnswer{.allow = given->allow, .trust = given->allow && given->remember};
    }
    if (!m_message) return ActivityAnswer{};
    const std::optional<bool> isOk = m_message->Answer();
    if (!isOk) return std::nullopt;
    return ActivityAnswer{.allow = *isOk};
}

void ActivityPrompt::TakeAway() {
    if (m_question) m_gone.push_back(std::move(m_question));
    if (m_message) m_gone.push_back(std::move(m_message));
    for (const auto& dialog : m_gone) ::ShowWindow(dialog->Window(), SW_HIDE);
}

}  // namespace brennvar
