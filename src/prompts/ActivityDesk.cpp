#include "prompts/ActivityDesk.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace brennvar {
namespace {

struct Question {
    ActivityRequest request;
    std::optional<ActivityAnswer> answer{};
};

}  // namespace

struct ActivityDesk::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<Question>> questions;
    std::deque<Order> orders;
    // Such an order is among them. A client may give them as fast as it can, and one says as much as a thousand.
    bool wantsForward = false;
    bool wantsLeave = false;
    bool isClosed = false;
};

ActivityDesk::ActivityDesk(std::function<void()> wake, std::chrono::milliseconds trustLimit)
    : m_wake(std::move(wake)), m_trustLimit(trustLimit), m_state(std::make_shared<State>()) {}

ActivityDesk::~ActivityDesk() {
    Close();
}

ActivityAnswer ActivityDesk::Ask(const ActivityRequest& request) {
    const auto question = std::make_shared<Question>(Question{request});
    {
        const std::lock_guard lock(m_state->mutex);
        if (m_state->isClosed) return {};
        m_state->questions.push_back(question);
    }
    m_wake();
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait(lock, [&] { return question->answer || m_state->isClosed; });
    return question->answer.value_or(ActivityAnswer());
}

void ActivityDesk::Trust(const std::string& path) {
    const auto isOver = std::make_shared<bool>(false);
    Post([state = m_state, isOver, path](ActivityView& view) {
        view.TrustProgram(path, [state, isOver] {
            const std::lock_guard lock(state->mutex);
            *isOver = true;
            state->changed.notify_all();
        });
    });
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait_for(lock, m_trustLimit, [&] { return *isOver || m_state->isClosed; });
}

void ActivityDesk::BringForward() {
    PostOnce(m_state->wantsForward, [](ActivityView& view) { view.BringForward(); });
}

void ActivityDesk::LeaveProgram() {
    PostOnce(m_state->wantsLeave, [](ActivityView& view) { view.LeaveProgram(); });
}

void ActivityDesk::Post(Order order) {
    {
        const std::lock_guard lock(m_state->mutex);
        if (m_state->isClosed) return;
        m_state->orders.push_back(std::move(order));
    }
    m_wake();
}

void ActivityDesk::PostOnce(bool& isOrdered, Order order) {
    {
        const std::lock_guard lock(m_state->mutex);
        if (std::exchange(isOrdered, true)) return;
    }
    Post(std::move(order));
}

void ActivityDesk::RunOrders(ActivityView& view) {
    std::deque<Order> orders;
    {
        const std::lock_guard lock(m_state->mutex);
        orders.swap(m_state->orders);
        m_state->wantsForward = m_state->wantsLeave = false;
    }
    // What is ordered meanwhile has its own wake: the other threads must not keep this one here.
    for (const Order& order : orders) {
        if (IsClosed()) return;
        order(view);
    }
}

bool ActivityDesk::IsClosed() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->isClosed;
}

std::optional<ActivityRequest> ActivityDesk::Waiting() const {
    const std::lock_guard lock(m_state->mutex);
    if (m_state->questions.empty()) return std::nullopt;
    return m_state->questions.front()->request;
}

void ActivityDesk::Answer(const ActivityAnswer& answer) {
    const std::lock_guard lock(m_state->mutex);
    if (m_state->questions.empty()) return;
    m_state->questions.front()->answer = answer;
    m_state->questions.pop_front();
    m_state->changed.notify_all();
}

void ActivityDesk::Close() {
    const std::lock_guard lock(m_state->mutex);
    m_state->isClosed = true;
    m_state->questions.clear();
    m_state->orders.clear();
    m_state->changed.notify_all();
}

}  // namespace brennvar
