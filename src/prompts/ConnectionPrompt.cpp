#include "prompts/ConnectionPrompt.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "prompts/PromptText.h"

namespace brennvar {
namespace {

// Stands for the path of a program that nobody knows, in the answer; the screen shows it in the user's language.
constexpr char kUnknownPath[] = "Unknown name";

// A path is used as the fixed fields of rules and answers hold it, 260 bytes with its zero: a rule for a longer one
// would never be found again.
constexpr std::size_t kLongestPath = sizeof ConnectionPromptAnswer::path - 1;

std::uint64_t AddressOf(void* memory) {
    return reinterpret_cast<std::uintptr_t>(memory);
}

class BusyScope {
public:
    explicit BusyScope(bool& busy) : m_busy(busy) { m_busy = true; }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    ~BusyScope() { m_busy = false; }

private:
    bool& m_busy;
};

PromptDecision DecisionOf(PromptAnswer answer) {
    if (answer.remember) return answer.allow ? PromptDecision::AllowAndRemember : PromptDecision::DenyAndRemember;
    return answer.allow ? PromptDecision::AllowOnce : PromptDecision::DenyOnce;
}

}  // namespace

ConnectionPromptService::ConnectionPromptService(DeviceOpener& devices, PromptWorld& world)
    : m_devices(devices), m_world(world), m_packetData(kQuestionDataSize) {}

PromptCycle ConnectionPromptService::RunCycle() {
    if (m_busy) return PromptCycle::Busy;
    const BusyScope busy(m_busy);
    std::unique_ptr<Device> device = std::move(m_held);
    if (!device) {
        device = m_devices.Open(kDriverControlDeviceName);
        if (!device) return PromptCycle::NoDevice;
        if (!FetchQuestion(*device)) return PromptCycle::RequestFailed;
        if (m_block.questionPresent == 0) return PromptCycle::NoQuestion;
    }
    if (Answer()) return PromptCycle::Answered;
    m_held = std::move(device);
    return PromptCycle::Held;
}

bool ConnectionPromptService::Answer() {
    ConnectionPromptAnswer answer{};
    answer.kind = kPromptAnswerKind;
    answer.decision = PromptDecision::None;
    answer.questionId = m_block.questionId;
    answer.processId = m_request.processId;
    if (answer.processId != kNoProcess) {
        const Application application = FindApplication();
        PutText(answer.path, application.path);
        const std::optional<PromptDecision> decision = DecideOrDeny(application);
        if (!decision) return false;
        answer.decision = *decision;
    }
    m_world.SendAnswer(answer);
    return true;
}

bool ConnectionPromptService::FetchQuestion(Device& device) {
    m_request = {};
    std::fill(m_packetData.begin(), m_packetData.end(), std::byte{0});
    m_block = {};
    m_block.dataAddress = AddressOf(m_packetData.data());
    m_block.dataSize = kQuestionDataSize;
    m_block.requestAddress = AddressOf(&m_request);
    // What comes back in the block's addresses is never used: the areas are ours, wherever the driver points.
    return device.Exchange(kControlFetchQuestion, WritableRecordBytes(m_block));
}

ConnectionPromptService::Application ConnectionPromptService::FindApplication() {
    if (const std::string_view path = TextOf(m_request.path); !path.empty()) {
        return {std::string(path.substr(0, kLongestPath)), true};
    }
    if (auto path = m_world.ResolveProcessPath(m_request.processId); path && !path->empty()) {
        return {*std::move(path), true};
    }
    return {kUnknownPath, false};
}

std::optional<PromptDecision> ConnectionPromptService::DecideOrDeny(const Application& application) {
    try {
        return Decide(application);
    } catch (...) {
        // The driver has handed the question out and waits for its answer, though it could not be asked.
        return PromptDecision::DenyOnce;
    }
}

std::optional<PromptDecision> ConnectionPromptService::Decide(const Application& application) {
    switch (m_world.LookupAction(application.path)) {
        case RuleAction::Deny: return PromptDecision::DenyAndRemember;
        case RuleAction::Allow: return PromptDecision::AllowAndRemember;
        case RuleAction::Ask: break;
    }
    if (!m_world.IsReadyToAsk()) return std::nullopt;
    return DecisionOf(m_world.Ask(BuildQuestion(application)));
}

PromptQuestion ConnectionPromptService::BuildQuestion(const Application& application) {
    PromptFacts facts;
    facts.path = application.path;
    facts.applicationKnown = application.known;
    // The stand-in for an unknown path names no file, and must not find one by accident.
    if (application.known) facts.fileDescription = m_world.FileDescription(application.path);
    facts.protocol = m_request.protocol;
    facts.localAddress = m_request.localAddress;
    facts.remoteAddress = m_request.remoteAddress;
    if (facts.localAddress == 0) facts.localAddress = m_world.LocalAddressFor(facts.remoteAddress);
    if (facts.remoteAddress == 0) facts.remoteAddress = m_world.LocalAddressFor(facts.localAddress);
    facts.localPort = SwapPort(m_request.localPort);
    facts.remotePort = SwapPort(m_request.remotePort);
    facts.hostName = m_world.HostName(facts.remoteAddress);
    facts.advice = m_world.Advice(application.path);
    return BuildPromptQuestion(facts, m_world.LoadLanguage());
}

}  // namespace brennvar
