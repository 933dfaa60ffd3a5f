// Gathers what is to be known about a connection before it is decided, without a wait of its own: the look-ups are
// done on queues, and whoever asks every 100 ms whether they are over also keeps the limits.
//
// One stage follows the other: the path of the program, the rule for it, and, when the user has to be asked, the
// rest. What comes after its stage has ended is dropped.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>

#include "base/Clock.h"
#include "base/TaskQueue.h"
#include "ipc/DriverRecords.h"
#include "ipc/RecordFile.h"
#include "prompts/FactSources.h"
#include "prompts/LookUps.h"
#include "prompts/PromptText.h"

namespace brennvar {

class FactsGatherer {
public:
    // The path of a process is waited for this long, then the program is unknown.
    static constexpr std::chrono::milliseconds kPathLimit{2000};
    // The rule decides, so its file gets all of its retries, and some time to be read; only a look-up that hangs
    // takes longer, and then the user is asked.
    static constexpr std::chrono::milliseconds kRuleLimit =
        kRecordFilePolicy.retries * kRecordFilePolicy.pause + std::chrono::seconds(2);
    // Everything else may be left out of a question.
    static constexpr std::chrono::milliseconds kRestLimit{500};

    // Threads that do not wait for each other.
    struct Queues {
        TaskQueue& deciding;    // paths and rules
        TaskQueue& programs;    // program files, which the shell and the disk may hold up
        TaskQueue& connection;  // addresses, names, advice, words
    };
    // All are borrowed; sources and queues are used until the queues end.
    FactsGatherer(FactSources& sources, Queues queues, const Clock& clock)
        : m_sources(sources), m_queues(queues), m_clock(clock) {}
    FactsGatherer(const FactsGatherer&) = delete;
    FactsGatherer& operator=(const FactsGatherer&) = delete;

    // Begins with another connection; what is still looked up for the last one is not waited for.
    void Start(const ConnectionPromptRequest& request);
    // Nothing more is waited for. To be called often.
    [[nodiscard]] bool IsOver();

    // The results, once it is over.
    [[nodiscard]] RuleAction Rule() const { return m_rule; }  // of an unknown program: Ask
    [[nodiscard]] const PromptFacts& Facts() const { return m_facts; }
    [[nodiscard]] const QuestionWords& Words() const { return *m_words; }

private:
    enum class Stage { Path, Rule, Rest, Over };
    // Of a connection of which one address may be unknown.
    struct Ends {
        Ipv4 local = 0;
        Ipv4 remote = 0;
        std::string hostName;
    };

    void Enter(Stage stage);
    void OnPath(const std::string& path);
    void OnRule(RuleAction rule);
    void FindRest();

    FactSources& m_sources;
    const Queues m_queues;
    const Clock& m_clock;

    LookUps m_lookUps{m_clock};  // of the present stage
    Stage m_stage = Stage::Over;
    RuleAction m_rule = RuleAction::Ask;
    PromptFacts m_facts;
    std::shared_ptr<const QuestionWords> m_words;
};

}  // namespace brennvar
