// Where the threads that serve requests meet the user-interface thread: questions go over it, one after the other
// in the order in which they came, and answers come back.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "prompts/ActivityRequest.h"

namespace brennvar {

// What requests make the program do. User-interface thread.
class ActivityView {
public:
    virtual ~ActivityView() = default;
    // Sends the command that makes the service trust a program; over is called when it has been delivered or given
    // up, unless the program ends before.
    virtual void TrustProgram(const std::string& path, std::function<void()> over) = 0;
    // The control center, wherever it is.
    virtual void BringForward() = 0;
    // Ends the program at once, with exit code 0.
    virtual void LeaveProgram() = 0;
};

class ActivityDesk final : public ActivityUser {
public:
    // A service that is away keeps a command for minutes, and whoever asked waits for the answer.
    static constexpr std::chrono::milliseconds kTrustLimit{3000};

    // wake, on any thread: RunOrders and Waiting are to be called soon.
    explicit ActivityDesk(std::function<void()> wake, std::chrono::milliseconds trustLimit = kTrustLimit);
    ~ActivityDesk() override;

    [[nodiscard]] ActivityAnswer Ask(const ActivityRequest& request) override;
    void Trust(const std::string& path) override;
    void BringForward() override;
    void LeaveProgram() override;

    // User-interface thread from here on.
    // Does what the other threads have ordered until now.
    void RunOrders(ActivityView& view);
    // The oldest question without an answer.
    [[nodiscard]] std::optional<ActivityRequest> Waiting() const;
    // To that one.
    void Answer(const ActivityAnswer& answer);
    // Nothing is waited for any more: every question, and every later one, is answered with no.
    void Close();

private:
    using Order = std::function<void(ActivityView&)>;
    struct State;

    void Post(Order order);
    // Does nothing while such an order waits to be carried out.
    void PostOnce(bool& isOrdered, Order order);
    [[nodiscard]] bool IsClosed() const;

    const std::function<void()> m_wake;
    const std::chrono::milliseconds m_trustLimit;
    const std::shared_ptr<State> m_state;  // shared with commands that outlive the desk
};

}  // namespace brennvar
