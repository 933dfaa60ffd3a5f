// The service as the windows see it: nothing here waits. What is asked is done on the link thread, first come,
// first served, and what comes of it is handed over on the user-interface thread, where all of this is called.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/StopSignal.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "ipc/CommandPipe.h"
#include "ipc/FilterQueue.h"
#include "ipc/ServicePipes.h"
#include "ipc/WatchedConnector.h"
#include "ipc/WithdrawableConnector.h"

namespace brennvar {

class ServiceLink {
public:
    // Makes the connector for the link thread; its waits are to end when the signal is requested.
    using MakeConnector = std::function<std::unique_ptr<PipeConnector>(const StopSignal& stop)>;

    // wake as for TaskThread: RunCompletions is to be called soon.
    ServiceLink(std::function<void()> wake, const MakeConnector& makeConnector);
    ServiceLink(const ServiceLink&) = delete;
    ServiceLink& operator=(const ServiceLink&) = delete;
    ~ServiceLink();

    // Told on the user-interface thread when what was sent has been delivered or given up: whether the service was
    // there for the last of it. Not told when the program ends before.
    using Sent = std::function<void(bool wasThere)>;
    // Command after command, in the order of these calls; what one call sends is not mixed with others. withdrawn:
    // requested before the first of it has found the service, nothing of it is sent any more; null: it stays.
    void Send(std::function<void(CommandPipe&)> command, Sent done = {},
              std::shared_ptr<const StopSignal> withdrawn = nullptr);
    // The same for the web-filter queue.
    void SendToFilter(std::function<void(FilterQueue&)> command, Sent done = {},
                      std::shared_ptr<const StopSignal> withdrawn = nullptr);

    // ask runs on the link thread; done gets its result on the user-interface thread, nothing when ask has failed.
    // It is not called when the program ends before.
    template <class Result>
    void Ask(std::function<Result(ServicePipes&)> ask, std::function<void(std::optional<Result>)> done) {
        m_thread.Ask<Result>([this, ask = std::move(ask)] { return ask(m_pipes); }, std::move(done));
    }

    // The same for what is read again and again (base/Refreshed.h): Pipes is for tasks of this queue only.
    [[nodiscard]] TaskQueue& Queue() { return m_thread; }
    [[nodiscard]] ServicePipes& Pipes() { return m_pipes; }

    void RunCompletions() { m_thread.RunCompletions(); }
    // As the last calls on its pipes, or on one of them, found it. It can change whenever a call is over.
    [[nodiscard]] PeerState Service() const { return m_connector.State(); }
    [[nodiscard]] PeerState StateOf(const std::string& pipeName) const { return m_connector.StateOf(pipeName); }
    // As the last call found it, whichever pipe that was on.
    [[nodiscard]] PeerState LastCall() const { return m_connector.LastCall(); }
    // Returns when what was sent so far has arrived, or as long afterwards as this says: the service, which may
    // just be busy, is there, or it is not.
    struct Patience {
        std::chrono::milliseconds whileReachable{};
        std::chrono::milliseconds whileMissing{};
    };
    void WaitUntilSent(Patience patience);
    // Gives what was sent so far this long to arrive; afterwards nothing is sent any more.
    void RequestStop(std::chrono::milliseconds limit) { m_thread.RequestStop(limit); }
    // The same, and waits for the end of a call that is under way.
    void Stop(std::chrono::milliseconds limit) { m_thread.Stop(limit); }

private:
    void Post(TaskThread::Task batch, Sent done, std::shared_ptr<const StopSignal> withdrawn);

    TaskThread m_thread;
    // Used on the link thread only; they exist before the first task and until the last one is over (Stop).
    SystemClock m_clock;
    std::unique_ptr<PipeConnector> m_pipeConnector;
    WatchedConnector m_connector;
    WithdrawableConnector m_sending;
    CommandPipe m_commands;
    FilterQueue m_filter;
    ServicePipes m_pipes;
};

}  // namespace brennvar
