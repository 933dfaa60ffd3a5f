// The service as the windows see it: nothing here waits. What is asked is done on the link thread, first come,
// first served, and what comes of it is handed over on the user-interface thread, where all of this is called.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/ServiceWatch.h"
#include "base/SystemClock.h"
#include "ipc/CommandPipe.h"
#include "ipc/LinkThread.h"
#include "ipc/Pipe_win.h"
#include "ipc/ServicePipes.h"

namespace brennvar {

class ServiceLink {
public:
    // wake as for LinkThread: RunCompletions is to be called soon.
    explicit ServiceLink(std::function<void()> wake);
    ServiceLink(const ServiceLink&) = delete;
    ServiceLink& operator=(const ServiceLink&) = delete;
    ~ServiceLink();

    // Command after command, in the order of these calls.
    void Send(std::function<void(CommandPipe&)> command);

    // ask runs on the link thread, done gets its result on the user-interface thread; not called when ask fails or
    // the program ends before.
    template <class Result>
    void Ask(std::function<Result(ServicePipes&)> ask, std::function<void(Result)> done) {
        Post<Result>(std::move(ask), std::move(done), std::make_shared<std::optional<bool>>());
    }
    // The next notice for the tray, if there is one. This call is also what tells whether the service is there.
    void FetchTrayText(std::function<void(std::optional<std::string>)> done);

    void RunCompletions() { m_thread.RunCompletions(); }
    [[nodiscard]] PeerState Service() const { return m_watch.State(Now()); }
    // Gives what was sent so far this long to arrive; afterwards nothing is sent any more.
    void Stop(std::chrono::milliseconds limit) { m_thread.Stop(limit); }

private:
    // found: filled by ask when it can tell whether the service was there.
    template <class Result>
    void Post(std::function<Result(ServicePipes&)> ask, std::function<void(Result)> done,
              std::shared_ptr<std::optional<bool>> found) {
        const auto result = std::make_shared<std::optional<Result>>();
        m_watch.CallGiven(Now());
        m_thread.Post([this, result, ask = std::move(ask)] { *result = ask(m_pipes); },
                      [this, result, found = std::move(found), done = std::move(done)] {
                          m_watch.CallOver(Now(), *found);
                          if (*result) done(std::move(**result));
                      });
    }
    static ServiceWatch::Time Now() { return std::chrono::steady_clock::now(); }

    ServiceWatch m_watch;
    LinkThread m_thread;
    // Used on the link thread only; they exist before the first task and until the last one is over (Stop).
    SystemClock m_clock;
    WinPipeConnector m_connector;
    CommandPipe m_commands;
    ServicePipes m_pipes;
};

}  // namespace brennvar
