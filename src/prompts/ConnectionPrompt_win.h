// The connection prompt as the control center has it: the road of a question (ConnectionQuestions) with its
// threads, its sources and its dialog. User-interface thread.
#pragma once

#include <functional>

#include "base/Clock.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "dialogs/AddressTools.h"
#include "ipc/Device.h"
#include "ipc/Pipe_win.h"
#include "prompts/AnswerDelivery.h"
#include "prompts/ConnectionQuestions.h"
#include "prompts/FactSources_win.h"
#include "prompts/FactsGatherer.h"
#include "prompts/QuestionFonts_win.h"

namespace brennvar {

class ConnectionPrompt final : private QuestionAsker {
public:
    // wake, as for TaskThread: Tick is to be called soon. The others are borrowed; the clock keeps the limits and
    // tells the day.
    ConnectionPrompt(DeviceOpener& devices, const Clock& clock, const std::function<void()>& wake);
    ConnectionPrompt(const ConnectionPrompt&) = delete;
    ConnectionPrompt& operator=(const ConnectionPrompt&) = delete;
    ~ConnectionPrompt() override;

    // Every 100 ms, and whenever wake says so. Returns at once, unless it asks the user: owner takes no input
    // meanwhile, and messages, further ticks among them, go on. The tools are those that a question offers.
    void Tick(HWND owner, AddressTools& tools);
    // A question is looked up or on screen, and the driver waits for its answer.
    [[nodiscard]] bool IsBusy() const { return m_questions.IsBusy(); }
    // Gives an answer that is under way a moment to arrive and cuts every other wait short. Further ticks do
    // nothing of use.
    void Stop();

private:
    [[nodiscard]] bool IsReadyToAsk() override;
    [[nodiscard]] PromptAnswer Ask(const PromptQuestion& question) override;

    QuestionFonts m_fonts;
    HWND m_owner = nullptr;  // of the latest tick
    AddressTools* m_tools = nullptr;
    // Before what they use: that exists until the last of them has stopped.
    TaskThread m_deciding;
    TaskThread m_programs;
    TaskThread m_connection;
    TaskThread m_delivering;
    SystemClock m_decidingWaits{m_deciding.Stopping()};
    WinPipeConnector m_decidingPipes{m_deciding.Stopping()};
    SystemClock m_deliveringWaits{m_delivering.Stopping()};
    WinPipeConnector m_deliveringPipes{m_delivering.Stopping()};
    WinFactSources m_sources;
    FactsGatherer m_facts;
    AnswerDelivery m_delivery{m_delivering, m_deliveringPipes, m_deliveringWaits};
    ConnectionQuestions m_questions;
};

}  // namespace brennvar
