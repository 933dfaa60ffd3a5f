// The road of a connection question: fetched from the driver, decided by a rule or by the user, answered to the
// service. Lives on the user-interface thread and never waits there; only the user's dialog takes its time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "ipc/Device.h"
#include "ipc/DriverRecords.h"
#include "ipc/PipeRecords.h"
#include "prompts/AnswerDelivery.h"
#include "prompts/FactsGatherer.h"
#include "prompts/PromptQuestion.h"

namespace brennvar {

// Puts a question to the user.
class QuestionAsker {
public:
    virtual ~QuestionAsker() = default;
    // False: something that is about to end keeps mouse and keyboard to itself. To be asked again a little later.
    [[nodiscard]] virtual bool IsReadyToAsk() = 0;
    // Shows the question and returns when it is answered. Pumps messages meanwhile, so ticks go on.
    [[nodiscard]] virtual PromptAnswer Ask(const PromptQuestion& question) = 0;
};

class ConnectionQuestions {
public:
    enum class State {
        Idle,        // nothing is known of a question
        Gathering,   // one has been taken from the driver; its facts are looked up, or the user cannot be asked now
        Asking,      // it is on screen
        Delivering,  // its answer is on the way to the service
    };

    // All are borrowed and must outlive the object.
    ConnectionQuestions(DeviceOpener& devices, FactsGatherer& facts, AnswerDelivery& delivery,
                        QuestionAsker& asker);
    ConnectionQuestions(const ConnectionQuestions&) = delete;
    ConnectionQuestions& operator=(const ConnectionQuestions&) = delete;

    // Goes on as far as is possible now, with one question at a time: the next one is fetched when the answer has
    // been delivered or given up. Meant for a timer of 100 ms and for every look-up that is over. The user's dialog
    // pumps messages, so ticks arrive while a question is on screen, and they do nothing.
    void Tick();

    [[nodiscard]] State CurrentState() const { return m_state; }
    // A question has been taken from the driver and not been answered, normally because it is on screen.
    [[nodiscard]] bool IsBusy() const { return m_state == State::Gathering || m_state == State::Asking; }

private:
    void Fetch();
    [[nodiscard]] bool FetchQuestion(Device& device);
    void Decide();
    [[nodiscard]] PromptDecision AskOrDeny();
    void Deliver(PromptDecision decision);
    void SendAnswer();

    DeviceOpener& m_devices;
    FactsGatherer& m_facts;
    AnswerDelivery& m_delivery;
    QuestionAsker& m_asker;
    State m_state = State::Idle;
    std::unique_ptr<Device> m_device;  // open from the question to its answer
    // The driver writes into these through their addresses. They are kept between the ten ticks a second, and they
    // never move.
    PromptExchangeBlock m_block{};
    ConnectionPromptRequest m_request{};
    std::vector<std::byte> m_packetData;
    ConnectionPromptAnswer m_answer{};
    bool m_isAnswerLeft = false;
};

}  // namespace brennvar
