#include "prompts/ActivityQuestions.h"

#include <string_view>
#include <utility>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

// The path comes from a client: one on another machine, or one that means different files by and by, is not
// opened for it.
bool IsWholeLocalPath(std::string_view path) {
    return path.size() > 3 && AsciiLower(path[0]) >= 'a' && AsciiLower(path[0]) <= 'z' && path[1] == ':' &&
           (path[2] == '\\' || path[2] == '/');
}

}  // namespace

void ActivityQuestions::Tick() {
    if (m_state == State::Asking) {
        const std::optional<ActivityAnswer> answer = m_asker.Answer();
        if (!answer) return;
        m_asker.TakeAway();
        m_state = State::Idle;
        m_desk.Answer(*answer);
    }
    if (m_state == State::Idle) {
        if (const std::optional<ActivityRequest> request = m_desk.Waiting()) Gather(*request);
    }
    if (m_state != State::Gathering || !(m_lookUps.AllFound() || m_lookUps.IsTimeUp())) return;
    if (!m_asker.IsReadyToAsk()) return;
    m_lookUps.End();
    m_state = State::Asking;
    ActivityQuestion question = BuildActivityQuestion(m_facts, m_words->language);
    question.charset = m_words->charset;
    m_asker.Open(question);
}

void ActivityQuestions::Gather(const ActivityRequest& request) {
    m_words = std::make_shared<const QuestionWords>();
    m_facts = {.kind = request.kind,
               .acting = {.path = request.actingPath, .fileDescription = {}},
               .target = {.path = request.targetPath, .fileDescription = {}}};
    m_lookUps.Begin(kFactsLimit);
    m_lookUps.Find<std::shared_ptr<const QuestionWords>>(
        m_queues.words,
        [&sources = m_sources] { return std::make_shared<const QuestionWords>(sources.LoadWords()); },
        [this](std::shared_ptr<const QuestionWords> words) {
            if (words) m_words = std::move(words);
        });
    GatherProgram(&ActivityFacts::acting);
    GatherProgram(&ActivityFacts::target);
    m_state = State::Gathering;  // not before all of it: what has failed without memory begins anew
}

void ActivityQuestions::GatherProgram(ActivityProgram ActivityFacts::*program) {
    const std::string& path = (m_facts.*program).path;
    if (!IsWholeLocalPath(path)) return;  // its file name has to do, and the icon of any program
    m_lookUps.Find<std::optional<ProgramVersion>>(
        m_queues.programs, [&sources = m_sources, path] { return sources.Version(path); },
        [this, program](std::optional<ProgramVersion> version) {
            if (!version) return;
            (m_facts.*program).fileDescription = std::move(version->description);
            (m_facts.*program).company = std::move(version->company);
        });
    if (program != &ActivityFacts::acting) return;
    m_lookUps.Find<std::shared_ptr<const QuestionIcon>>(
        m_queues.programs, [&sources = m_sources, path] { return sources.Icon(path); },
        [this, program](std::shared_ptr<const QuestionIcon> icon) { (m_facts.*program).icon = std::move(icon); });
}

void ActivityQuestions::Stop() {
    m_lookUps.End();
    m_desk.Close();
    m_asker.TakeAway();
    m_state = State::Idle;
}

}  // namespace brennvar
