#include "service/Service_win.h"

#include <array>
#include <utility>

namespace brennvar::standin {
namespace {

constexpr std::uint32_t kNotFound = 1;  // status of the process and tray pipes; 2 is the good one
constexpr std::uint32_t kListed = 1;    // answers to a filter query
constexpr std::uint32_t kNotListed = 2;
constexpr UINT kDeathExitCode = 3;
constexpr std::uint32_t kFilteringProxyPortOption = 79;
constexpr std::uint32_t kBlockSecondsOption = 18;
constexpr char kRefreshNotice[] = "REFRESH";
// States of the connection table that belong to a connection from outside.
constexpr std::uint32_t kSynReceived = 2;
constexpr std::uint32_t kEstablishedIn = 3;

// A record of exactly its size, or nothing.
template <RecordType Record>
std::optional<Record> Decode(Service::Bytes bytes) {
    if (bytes.size() != sizeof(Record)) return std::nullopt;
    return DecodeRecord<Record>(bytes);
}

template <RecordType Record>
std::vector<std::byte> Encode(const Record& record) {
    const auto bytes = RecordBytes(record);
    return {bytes.begin(), bytes.end()};
}

std::string ImagePath(std::uint32_t processId) {
    const UniqueProcess process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    std::array<char, sizeof(PidResolveAnswer::path)> path{};
    auto size = static_cast<DWORD>(path.size());
    if (!process || !::QueryFullProcessImageNameA(process.Get(), 0, path.data(), &size)) return {};
    return {path.data(), size};
}

// What a service may refuse.
bool ChangesRulesOrLists(CommandCode code) {
    switch (code) {
        case CommandCode::AddAdvancedRule:
        case CommandCode::ModifyAdvancedRule:
        case CommandCode::DeleteAdvancedRule:
        case CommandCode::MoveAdvancedRuleUp:
        case CommandCode::MoveAdvancedRuleDown:
        case CommandCode::AllowProcessText:
        case CommandCode::ResetTrusted: return true;
        default: return false;
    }
}

}  // namespace

Service::Service(DataFolder& data, DriverFeeder& feeder, StartedProcesses& processes, std::uint32_t dieAfter,
                 std::uint32_t dieAfterCommand)
    : m_data(data),
      m_feeder(feeder),
      m_started(processes),
      m_dieAfter(dieAfter),
      m_dieAfterCommand(dieAfterCommand) {
    LoadRules();
    m_feeder.SetJudge(this);
}

Service::~Service() {
    m_feeder.SetJudge(nullptr);
}

bool Service::Refuses() {
    std::uint32_t left = m_refusals;
    while (left > 0 && !m_refusals.compare_exchange_weak(left, left - 1)) {
    }
    return left > 0;
}

Service::Answer Service::HandleCommand(Bytes record) {
    if (const auto command = Decode<CommandRecord>(record)) Apply(*command);
    if (m_dieAfterCommand != 0 && --m_dieAfterCommand == 0)
        ::TerminateProcess(::GetCurrentProcess(), kDeathExitCode);
    return std::nullopt;
}

void Service::Apply(const CommandRecord& command) {
    if (ChangesRulesOrLists(command.code) && Refuses()) return;
    switch (command.code) {
        case CommandCode::EventReport: m_data.LogEvent(TextOf(command.eventTitle)); break;
        case CommandCode::BlockAddress:
            m_feeder.BlockAddress(command.address, std::chrono::seconds(m_data.OptionOr(kBlockSecondsOption, 600)));
            break;
        case CommandCode::TerminateProcess:
            // Of a process that the scenario has not started, only the rows go.
            (void)m_started.End(command.processId);
            m_feeder.DropProcess(command.processId);
            break;
        case CommandCode::AddAdvancedRule: m_data.AddAdvancedRules({command.advancedRule}); break;
        case CommandCode::ModifyAdvancedRule:
            m_data.ReplaceAdvancedRule(command.ruleId, command.advancedRule);
            break;
        case CommandCode::DeleteAdvancedRule: m_data.RemoveAdvancedRule(command.ruleId); break;
        case CommandCode::ReloadAdvancedRules:
            LoadRules();
            m_feeder.AskJudgeAgain();
            break;
        case CommandCode::SetOption: m_data.SetOption(command.optionId, command.optionValue); break;
        case CommandCode::SetOptionText: m_data.SetOptionText(command.optionId, TextOf(command.optionText)); break;
        case CommandCode::SetSkin: m_data.SetFolderName("Skin", TextOf(command.optionText)); break;
        case CommandCode::SetLanguage: m_data.SetFolderName("Language", TextOf(command.optionText)); break;
        case CommandCode::SetApplicationRule: ApplyRule(command); break;
        case CommandCode::DeleteLogs: m_data.DeleteLogs(TextOf(command.subject), command.value != 0); break;
        case CommandCode::AllowProcessText: m_data.AddTrusted({std::string(TextOf(command.optionText))}); break;
        case CommandCode::ResetTrusted: m_data.ClearTrusted(); break;
        case CommandCode::MoveAdvancedRuleUp: m_data.MoveAdvancedRule(command.ruleId, true); break;
        case CommandCode::MoveAdvancedRuleDown: m_data.MoveAdvancedRule(command.ruleId, false); break;
        default: break;  // nothing to do here but to have it in the journal
    }
}

void Service::ApplyRule(const CommandRecord& command) {
    const std::string_view path = TextOf(command.subject);
    switch (static_cast<RuleCommandAction>(command.value)) {
        case RuleCommandAction::Deny: m_data.SetRule(path, RuleAction::Deny); break;
        case RuleCommandAction::Allow: m_data.SetRule(path, RuleAction::Allow); break;
        case RuleCommandAction::Ask: m_data.SetRule(path, RuleAction::Ask); break;
        case RuleCommandAction::Remove: m_data.RemoveRule(path); break;
        default: break;
    }
}

Service::Answer Service::HandlePid(Bytes record) {
    const auto request = Decode<PidResolveRequest>(record);
    if (!request || request->code != kServiceRequestCode) return std::nullopt;
    if (m_dieAfter != 0 && --m_dieAfter == 0) ::TerminateProcess(::GetCurrentProcess(), kDeathExitCode);
    const std::string path = PathOfProcess(request->processId);
    PidResolveAnswer answer{};
    answer.status = path.empty() ? kNotFound : kServiceAnswerValid;
    PutText(answer.path, path);
    return Encode(answer);
}

std::string Service::PathOfProcess(std::uint32_t processId) {
    {
        const std::scoped_lock lock(m_lock);
        const auto found = m_processes.find(processId);
        if (found != m_processes.end()) return found->second;
    }
    return ImagePath(processId);
}

Service::Answer Service::HandleTray(Bytes record) {
    const auto request = Decode<TrayTextRequest>(record);
    if (!request || request->code != kServiceRequestCode) return std::nullopt;
    TrayTextAnswer answer{};
    answer.status = kNotFound;
    const std::scoped_lock lock(m_lock);
    if (!m_notices.empty()) {
        answer.status = kServiceAnswerValid;
        PutText(answer.text, m_notices.front());
        m_notices.pop_front();
    }
    return Encode(answer);
}

Service::Answer Service::HandleQueue(Bytes record) {
    const auto request = Decode<FilterQueueRecord>(record);
    if (!request) return std::nullopt;
    FilterQueueRecord answer{};
    answer.code = kFilterAnswerValid;
    switch (static_cast<FilterCode>(request->code)) {
        case FilterCode::Query:
            answer.answerValue = m_data.HasSite(TextOf(request->text)) ? kListed : kNotListed;
            return Encode(answer);
        case FilterCode::AddEntry:
            if (!Refuses()) m_data.AddSites({std::string(TextOf(request->text))});
            return Encode(answer);
        case FilterCode::DeleteEntry:
            if (!Refuses()) m_data.RemoveSite(request->entryOrValue);
            return Encode(answer);
        case FilterCode::SetProxyPort:
            m_data.SetOption(kFilteringProxyPortOption, request->number);
            return std::nullopt;
        default: return std::nullopt;  // written only
    }
}

Service::Answer Service::HandleConfirm(Bytes record) {
    const auto answer = Decode<ConnectionPromptAnswer>(record);
    if (!answer || answer->kind != kPromptAnswerKind) return std::nullopt;
    const bool allow = answer->decision == PromptDecision::AllowAndRemember;
    if (allow || answer->decision == PromptDecision::DenyAndRemember) {
        m_data.SetRule(TextOf(answer->path), allow ? RuleAction::Allow : RuleAction::Deny);
        AddNotice(kRefreshNotice);
    }
    m_feeder.AnswerQuestion(answer->questionId);
    return std::nullopt;
}

void Service::LoadRules() {
    std::vector<AdvancedRuleRecord> rules = m_data.AdvancedRules();
    const std::scoped_lock lock(m_lock);
    m_rules = std::move(rules);
}

std::optional<Verdict> Service::Judge(const SeenConnection& seen) {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    SeenConnection dated = seen;
    dated.minute = now.wHour * 60U + now.wMinute;
    dated.day = now.wYear * 10000U + now.wMonth * 100U + now.wDay;
    const std::scoped_lock lock(m_lock);
    return standin::Judge(m_rules, dated);
}

bool Service::Denies(const ConnectionEntry& entry) {
    {
        const std::scoped_lock lock(m_lock);
        if (m_rules.empty()) return false;
    }
    const auto verdict = Judge({.protocol = kProtocolTcp,
                                .isIncoming = entry.state == kSynReceived || entry.state == kEstablishedIn,
                                .localAddress = entry.localAddress,
                                .remoteAddress = entry.remoteAddress,
                                .localPort = SwapPort(entry.localPort),
                                .remotePort = SwapPort(entry.remotePort),
                                .program = PathOfProcess(entry.processId)});
    return verdict && !verdict->isAllowed;
}

std::optional<Verdict> Service::VerdictOn(const ConnectionPromptRequest& request) {
    // Questions do not say who began; the programs of this machine are asked about.
    return Judge({.protocol = request.protocol,
                  .isIncoming = false,
                  .localAddress = request.localAddress,
                  .remoteAddress = request.remoteAddress,
                  .localPort = SwapPort(request.localPort),
                  .remotePort = SwapPort(request.remotePort),
                  .program = std::string(TextOf(request.path))});
}

void Service::AddNotice(std::string text) {
    const std::scoped_lock lock(m_lock);
    m_notices.push_back(std::move(text));
}

void Service::AddProcess(std::uint32_t processId, std::string path) {
    const std::scoped_lock lock(m_lock);
    m_processes[processId] = std::move(path);
}

}  // namespace brennvar::standin
