#include "prompts/FactsGatherer.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "ipc/PipeRecords.h"

namespace brennvar {
namespace {

// Stands for the path of a program that nobody knows, in the answer; the screen shows it in the user's language.
constexpr char kUnknownPath[] = "Unknown name";

// A path is used as the fixed fields of rules and answers hold it, 260 bytes with its zero: a rule for a longer one
// would never be found again.
constexpr std::size_t kLongestPath = sizeof ConnectionPromptAnswer::path - 1;

}  // namespace

void FactsGatherer::Start(const ConnectionPromptRequest& request) {
    // First of all: no question may show what is known of the last one.
    m_rule = RuleAction::Ask;
    m_facts = {};
    m_facts.path = kUnknownPath;  // short enough to need no memory
    m_facts.applicationKnown = false;
    m_words = std::make_shared<const QuestionWords>();
    m_facts.processId = request.processId;
    m_facts.protocol = request.protocol;
    m_facts.localAddress = request.localAddress;
    m_facts.localPort = SwapPort(request.localPort);
    m_facts.remoteAddress = request.remoteAddress;
    m_facts.remotePort = SwapPort(request.remotePort);

    Enter(Stage::Path);
    if (const std::string_view path = TextOf(request.path); !path.empty()) {
        OnPath(std::string(path.substr(0, kLongestPath)));
        return;
    }
    m_lookUps.Find<std::string>(
        m_queues.deciding,
        [&sources = m_sources, processId = request.processId] {
            return sources.ResolveProcessPath(processId).value_or("");
        },
        [this](const std::string& path) { OnPath(path); });
}

void FactsGatherer::OnPath(const std::string& path) {
    if (path.empty()) {
        // Nothing is looked up for the stand-in of a path: it must find no rule or file by accident.
        FindRest();
        return;
    }
    m_facts.path = path;
    m_facts.applicationKnown = true;
    Enter(Stage::Rule);
    m_lookUps.Find<RuleAction>(
        m_queues.deciding, [&sources = m_sources, path] { return sources.LookupAction(path); },
        [this](RuleAction rule) { OnRule(rule); });
}

void FactsGatherer::OnRule(RuleAction rule) {
    m_rule = rule;
    if (rule == RuleAction::Allow || rule == RuleAction::Deny) {
        Enter(Stage::Over);
    } else {
        FindRest();
    }
}

void FactsGatherer::FindRest() {
    Enter(Stage::Rest);
    m_lookUps.Find<std::shared_ptr<const QuestionWords>>(
        m_queues.connection,
        [&sources = m_sources] { return std::make_shared<const QuestionWords>(sources.LoadWords()); },
        [this](std::shared_ptr<const QuestionWords> words) {
            if (words) m_words = std::move(words);
        });
    m_lookUps.Find<Ends>(
        m_queues.connection,
        [&sources = m_sources, day = m_clock.Today(), local = m_facts.localAddress,
         remote = m_facts.remoteAddress] {
            Ends ends{.local = local, .remote = remote, .hostName = {}};
            if (ends.local == 0) ends.local = sources.LocalAddressFor(ends.remote);
            if (ends.remote == 0) ends.remote = sources.LocalAddressFor(ends.local);
            ends.hostName = sources.HostName(day, ends.remote);
            return ends;
        },
        [this](Ends ends) {
            m_facts.localAddress = ends.local;
            m_facts.remoteAddress = ends.remote;
            m_facts.hostName = std::move(ends.hostName);
        });
    if (!m_facts.applicationKnown) return;
    const std::string& path = m_facts.path;
    m_lookUps.Find<std::optional<std::uint32_t>>(
        m_queues.connection, [&sources = m_sources, path] { return sources.Advice(path); },
        [this](std::optional<std::uint32_t> advice) { m_facts.advice = advice; });
    m_lookUps.Find<std::optional<ProgramVersion>>(
        m_queues.programs, [&sources = m_sources, path] { return sources.Version(path); },
        [this](std::optional<ProgramVersion> version) {
            if (!version) return;
            m_facts.fileDescription = std::move(version->description);
            m_facts.company = std::move(version->company);
        });
    m_lookUps.Find<std::shared_ptr<const QuestionIcon>>(
        m_queues.programs, [&sources = m_sources, path] { return sources.Icon(path); },
        [this](std::shared_ptr<const QuestionIcon> icon) { m_facts.icon = std::move(icon); });
}

void FactsGatherer::Enter(Stage stage) {
    m_stage = stage;
    switch (stage) {
        case Stage::Path: m_lookUps.Begin(kPathLimit); break;
        case Stage::Rule: m_lookUps.Begin(kRuleLimit); break;
        case Stage::Rest: m_lookUps.Begin(kRestLimit); break;
        case Stage::Over: m_lookUps.End(); break;
    }
}

bool FactsGatherer::IsOver() {
    if (m_stage == Stage::Rest && m_lookUps.AllFound()) Enter(Stage::Over);
    if (m_stage == Stage::Over) return true;
    if (!m_lookUps.IsTimeUp()) return false;
    switch (m_stage) {
        case Stage::Path: OnPath(""); break;
        case Stage::Rule: OnRule(RuleAction::Ask); break;
        default: Enter(Stage::Over); break;
    }
    return m_stage == Stage::Over;
}

}  // namespace brennvar
