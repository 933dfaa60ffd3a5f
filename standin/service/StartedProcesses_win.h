// The processes that the scenario starts, so that there are some that a test may have terminated: copies of this
// program that do nothing but wait for it to end.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>

#include "base/Handles_win.h"

namespace brennvar::standin {

class StartedProcesses {
public:
    StartedProcesses() = default;
    StartedProcesses(const StartedProcesses&) = delete;
    StartedProcesses& operator=(const StartedProcesses&) = delete;
    // Ends those that still run.
    ~StartedProcesses();

    // number: of its name in the scenario (Scenario.h).
    void Start(std::uint32_t number);
    // The identifier of the process that the number stands for; any other identifier as it is.
    [[nodiscard]] std::uint32_t IdOf(std::uint32_t number);
    // Ends it when it is one of these. False: it is none.
    [[nodiscard]] bool End(std::uint32_t processId);

    // What the copy does: returns when the process has ended. False: there is none.
    [[nodiscard]] static bool WaitFor(std::uint32_t processId);

private:
    struct Started {
        std::uint32_t processId;
        UniqueProcess process;
    };
    std::mutex m_lock;
    std::map<std::uint32_t, Started> m_processes;  // by number
};

}  // namespace brennvar::standin
