#include "prompts/ConnectionQuestions.h"

#include <algorithm>
#include <utility>

#include "prompts/PromptText.h"

namespace brennvar {
namespace {

std::uint64_t AddressOf(void* memory) {
    return reinterpret_cast<std::uintptr_t>(memory);
}

PromptDecision DecisionOf(PromptAnswer answer) {
    if (answer.remember) return answer.allow ? PromptDecision::AllowAndRemember : PromptDecision::DenyAndRemember;
    return answer.allow ? PromptDecision::AllowOnce : PromptDecision::DenyOnce;
}

}  // namespace

ConnectionQuestions::ConnectionQuestions(DeviceOpener& devices, FactsGatherer& facts, AnswerDelivery& delivery,
                                         QuestionAsker& asker)
    : m_devices(devices), m_facts(facts), m_delivery(delivery), m_asker(asker), m_packetData(kQuestionDataSize) {}

void ConnectionQuestions::Tick() {
    if (m_state == State::Delivering && m_isAnswerLeft) SendAnswer();
    if (m_state == State::Delivering && !m_delivery.IsUnderWay()) {
        m_device.reset();
        m_state = State::Idle;
    }
    if (m_state == State::Idle) Fetch();
    if (m_state == State::Gathering && m_facts.IsOver()) Decide();
}

void ConnectionQuestions::Fetch() {
    std::unique_ptr<Device> device = m_devices.Open(kDriverControlDeviceName);
    // A driver that is not there has no question, and one that fails keeps it.
    if (!device || !FetchQuestion(*device) || m_block.questionPresent == 0) return;
    m_device = std::move(device);
    if (m_request.processId == kNoProcess) {
        Deliver(PromptDecision::None);
        return;
    }
    m_state = State::Gathering;
    try {
        m_facts.Start(m_request);
    } catch (...) {
        Deliver(PromptDecision::DenyOnce);  // nothing is known of who asks
    }
}

bool ConnectionQuestions::FetchQuestion(Device& device) {
    m_request = {};
    std::fill(m_packetData.begin(), m_packetData.end(), std::byte{0});
    m_block = {};
    m_block.dataAddress = AddressOf(m_packetData.data());
    m_block.dataSize = kQuestionDataSize;
    m_block.requestAddress = AddressOf(&m_request);
    // What comes back in the block's addresses is never used: the areas are ours, wherever the driver points.
    return device.Exchange(kControlFetchQuestion, WritableRecordBytes(m_block));
}

void ConnectionQuestions::Decide() {
    switch (m_facts.Rule()) {
        case RuleAction::Deny: Deliver(PromptDecision::DenyAndRemember); return;
        case RuleAction::Allow: Deliver(PromptDecision::AllowAndRemember); return;
        case RuleAction::Ask: break;
    }
    if (!m_asker.IsReadyToAsk()) return;
    m_state = State::Asking;
    Deliver(AskOrDeny());
}

PromptDecision ConnectionQuestions::AskOrDeny() {
    try {
        PromptQuestion question = BuildPromptQuestion(m_facts.Facts(), m_facts.Words().language);
        question.charset = m_facts.Words().charset;
        PromptAnswer answer = m_asker.Ask(question);
        // A rule for a program that nobody knows would be one for all of them.
        if (!m_facts.Facts().applicationKnown) answer.remember = false;
        return DecisionOf(answer);
    } catch (...) {
        // The driver has handed the question out and waits for its answer, though it could not be asked.
        return PromptDecision::DenyOnce;
    }
}

void ConnectionQuestions::Deliver(PromptDecision decision) {
    m_state = State::Delivering;
    m_answer = {};
    m_answer.kind = kPromptAnswerKind;
    m_answer.decision = decision;
    m_answer.questionId = m_block.questionId;
    m_answer.processId = m_request.processId;
    if (m_answer.processId != kNoProcess) PutText(m_answer.path, m_facts.Facts().path);
    m_isAnswerLeft = true;
    SendAnswer();
}

void ConnectionQuestions::SendAnswer() {
    m_delivery.Send(m_answer);  // which may throw, without memory: the next tick tries again
    m_isAnswerLeft = false;
}

}  // namespace brennvar
