// A server of the test's own on loopback: takes one connection after the other and plays a script on each.
#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar::test {

class LoopbackServer {
public:
    // One thing to wait for and what to answer then; an empty answer says nothing.
    struct Step {
        std::string until;  // what has been received since the last step ends with this
        std::string answer;
    };
    // Behind the last step the server closes the connection, or waits until the other side does.
    struct Connection {
        std::vector<Step> steps;
        bool closes = true;
    };

    // Listens at once, on a port that was free.
    explicit LoopbackServer(std::deque<Connection> script);
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    ~LoopbackServer();

    [[nodiscard]] std::uint16_t Port() const { return m_port; }
    // All that came, a text for each connection so far.
    [[nodiscard]] std::vector<std::string> Received() const;

private:
    void Run();
    void Serve(SOCKET peer, const Connection& connection);
    // False: nothing comes any more.
    [[nodiscard]] bool ReceiveByte(SOCKET peer, std::string& heard);

    std::deque<Connection> m_script;
    SOCKET m_listener = INVALID_SOCKET;
    std::uint16_t m_port = 0;
    mutable std::mutex m_mutex;  // guards what follows
    std::vector<std::string> m_received;
    SOCKET m_peer = INVALID_SOCKET;
    bool m_isEnding = false;
    std::thread m_thread;  // last: it uses what stands above
};

}  // namespace brennvar::test
