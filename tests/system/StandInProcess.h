// The service stand-in as a process of a test: started with a scenario and a data folder of its own, stopped and
// waited for at the end, so that a test leaves neither process nor driver behind.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Handles_win.h"
#include "support/TempFolder.h"

namespace brennvar::test {

// How long a test waits for anything before it fails. Nothing takes that long unless it is broken.
inline constexpr DWORD kPatienceMilliseconds = 30000;

class StandInProcess {
public:
    // Starts the program and waits until its pipes are there or it has ended. The scenario's lines are joined by
    // line ends; options go to the command line as they stand.
    explicit StandInProcess(const std::vector<std::string>& scenario, const std::string& options = "");
    StandInProcess(const StandInProcess&) = delete;
    StandInProcess& operator=(const StandInProcess&) = delete;
    ~StandInProcess();

    // The data folder's file of that name, whole; empty when there is none.
    [[nodiscard]] std::string Read(std::string_view name) const;
    [[nodiscard]] std::string DataFolder() const { return m_folder.Path(); }
    [[nodiscard]] std::string Output() const { return m_folder.Read("output.txt"); }
    // The journal's lines so far, without their sequence numbers.
    [[nodiscard]] std::vector<std::string> Journal() const;

    // Wait with a deadline for a condition, looking again every few milliseconds.
    [[nodiscard]] bool WaitForJournal(std::string_view line, std::size_t times = 1) const;
    [[nodiscard]] bool WaitForFile(std::string_view name, std::string_view content) const;
    template <class Condition>
    [[nodiscard]] static bool WaitUntil(const Condition& condition) {
        for (DWORD waited = 0; waited < kPatienceMilliseconds; waited += kPauseMilliseconds) {
            if (condition()) return true;
            ::Sleep(kPauseMilliseconds);
        }
        return condition();
    }

    // Asks the program to stop and waits for its end.
    void Stop();
    // The exit code, once the program has ended of its own accord.
    [[nodiscard]] std::optional<DWORD> WaitForEnd() const;

private:
    static constexpr DWORD kPauseMilliseconds = 10;

    TempFolder m_folder;
    UniqueProcess m_process;
};

}  // namespace brennvar::test
