// The road of a question that other threads put to the user: its facts are gathered, it is shown, its answer goes
// back. One at a time, in the order in which they came. Lives on the user-interface thread and never waits there.
#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "base/Clock.h"
#include "base/TaskQueue.h"
#include "prompts/ActivityDesk.h"
#include "prompts/ActivityText.h"
#include "prompts/FactSources.h"
#include "prompts/LookUps.h"

namespace brennvar {

// Puts a question to the user.
class ActivityAsker {
public:
    virtual ~ActivityAsker() = default;
    // False: something that is about to end keeps mouse and keyboard to itself. To be asked again a little later.
    [[nodiscard]] virtual bool IsReadyToAsk() = 0;
    // Shows the question and returns.
    virtual void Open(const ActivityQuestion& question) = 0;
    // Nothing as long as the question stands. One that could not be shown, or was closed, is denied.
    [[nodiscard]] virtual std::optional<ActivityAnswer> Answer() = 0;
    // The question goes from the screen, answered or not.
    virtual void TakeAway() = 0;
};

class ActivityQuestions {
public:
    // What has not been found out by then is left out of the question.
    static constexpr std::chrono::milliseconds kFactsLimit{500};

    // Threads that do not wait for each other.
    struct Queues {
        TaskQueue& programs;  // program files, which the shell and the disk may hold up
        TaskQueue& words;     // the language
    };

    // All are borrowed; sources and queues are used until the queues end.
    ActivityQuestions(ActivityDesk& desk, ProgramSources& sources, Queues queues, ActivityAsker& asker,
                      const Clock& clock)
        : m_desk(desk), m_sources(sources), m_queues(queues), m_asker(asker), m_lookUps(clock) {}
    ActivityQuestions(const ActivityQuestions&) = delete;
    ActivityQuestions& operator=(const ActivityQuestions&) = delete;

    // Goes on as far as is possible now. For a timer of 100 ms, for whatever the desk has got, for every look-up
    // that is over and every answer.
    void Tick();
    // A question is looked up or on screen.
    [[nodiscard]] bool IsBusy() const { return m_state != State::Idle; }
    // Denies what waits and takes it from the screen. Nothing is asked any more.
    void Stop();

private:
    enum class State { Idle, Gathering, Asking };

    void Gather(const ActivityRequest& request);
    void GatherProgram(ActivityProgram ActivityFacts::*program);

    ActivityDesk& m_desk;
    ProgramSources& m_sources;
    const Queues m_queues;
    ActivityAsker& m_asker;
    State m_state = State::Idle;
    ActivityFacts m_facts;
    std::shared_ptr<const QuestionWords> m_words;
    LookUps m_lookUps;
};

}  // namespace brennvar
