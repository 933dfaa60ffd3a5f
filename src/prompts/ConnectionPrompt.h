// The road of a connection question: fetched from the driver, decided by a rule or by the user, answered to the
// service. Lives on the user-interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ipc/Device.h"
#include "ipc/DriverRecords.h"
#include "ipc/PipeRecords.h"
#include "prompts/PromptWorld.h"

namespace brennvar {

// How a cycle ended.
enum class PromptCycle {
    Busy,           // another one is still under way; nothing was done
    NoDevice,       // the driver is not there
    RequestFailed,  // the driver keeps its question
    NoQuestion,     // none is pending
    Held,           // the user cannot be asked at this moment; the next cycle goes on with this question
    Answered,       // one answer was handed over
};

class ConnectionPromptService {
public:
    // Both are borrowed and must outlive the service.
    ConnectionPromptService(DeviceOpener& devices, PromptWorld& world);
    ConnectionPromptService(const ConnectionPromptService&) = delete;
    ConnectionPromptService& operator=(const ConnectionPromptService&) = delete;

    // Fetches at most one question and answers it, however long the user takes. Meant for a timer of 100 ms: the
    // user's dialog pumps messages, so ticks arrive while a cycle is under way, and they do nothing.
    PromptCycle RunCycle();

    // A question has been taken from the driver and not answered, normally because it is on screen.
    [[nodiscard]] bool IsBusy() const { return m_busy || m_held; }

private:
    struct Application {
        std::string path;
        bool known;
    };

    // Of a question that was fetched. False: the user cannot be asked now.
    [[nodiscard]] bool Answer();
    [[nodiscard]] bool FetchQuestion(Device& device);
    [[nodiscard]] Application FindApplication();
    // Nothing: not now.
    [[nodiscard]] std::optional<PromptDecision> DecideOrDeny(const Application& application);
    [[nodiscard]] std::optional<PromptDecision> Decide(const Application& application);
    [[nodiscard]] PromptQuestion BuildQuestion(const Application& application);

    DeviceOpener& m_devices;
    PromptWorld& m_world;
    bool m_busy = false;
    std::unique_ptr<Device> m_held;  // the device of a question that waits for the next cycle
    // The driver writes into these through their addresses. They are kept between the ten cycles a second, and they
    // never move.
    PromptExchangeBlock m_block{};
    ConnectionPromptRequest m_request{};
    std::vector<std::byte> m_packetData;
};

}  // namespace brennvar
