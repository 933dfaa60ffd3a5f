// The service stand-in as a process of a test: started with a scenario and a data folder, stopped and waited for at
// the end, so that a test leaves neither process nor driver behind.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Programs.h"
#include "support/TempFolder.h"

namespace brennvar::test {

class StandInProcess {
public:
    // Starts the program and waits until its pipes are there or it has ended. The scenario's lines are joined by
    // line ends; options go to the command line as they stand. Without a data folder it has one of its own.
    explicit StandInProcess(const std::vector<std::string>& scenario, const std::string& options = "",
                            const std::string& dataFolder = "");
    StandInProcess(const StandInProcess&) = delete;
    StandInProcess& operator=(const StandInProcess&) = delete;
    ~StandInProcess();

    // The data folder's file of that name, whole; empty when there is none.
    [[nodiscard]] std::string Read(const std::string& name) const;
    // The journal's lines so far, without their sequence numbers; only those that begin with the given word.
    [[nodiscard]] std::vector<std::string> Journal(std::string_view word = "") const;

    // Wait with a deadline for a condition.
    [[nodiscard]] bool WaitForJournal(std::string_view line, std::size_t times = 1) const;

    // Asks the program to stop and waits for its end.
    void Stop();
    // The exit code, once the program has ended of its own accord; -1 when it has not.
    [[nodiscard]] long WaitForEnd() const { return m_program.WaitForEnd(); }

private:
    [[nodiscard]] std::string CommandLine(const std::vector<std::string>& scenario,
                                          const std::string& options) const;

    TempFolder m_ownFolder;
    std::string m_dataFolder;
    RunningProgram m_program;
};

}  // namespace brennvar::test
