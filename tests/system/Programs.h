// The programs under test, and waiting for what they do. Every wait is for a condition; the limit only ends a test
// that has failed.
#pragma once

#include <chrono>
#include <functional>
#include <source_location>
#include <string>

#include "base/Handles_win.h"

namespace brennvar::test {

// How long a test waits for anything before it fails. Nothing takes that long unless it is broken, on a machine
// whose other work takes nine tenths of it either.
inline constexpr std::chrono::seconds kPatience{90};

// Polls until the condition holds; false when it still does not at the end of the limit.
[[nodiscard]] bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit = kPatience);

// Ends the test, with the place that asked, when it does not hold.
using Place = std::source_location;
void Require(bool holds, Place place = Place::current());

// The path of a built program, given relative to the build folder ("standin\\brennvar.exe").
[[nodiscard]] std::string BuiltProgram(const std::string& relativePath);

// The data folder that the interface looks into, emptied.
[[nodiscard]] std::string EmptyDataFolder();

// A path as one word of a command line.
[[nodiscard]] std::string Quoted(const std::string& path);

// A program started by the test; ended by the destructor if it still runs.
class RunningProgram {
public:
    // Program and options as one command line. output: file for what it prints, or empty. IsRunning is false when
    // the program could not be started.
    explicit RunningProgram(std::string commandLine, const std::string& output = {});
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram();

    [[nodiscard]] DWORD Id() const { return m_id; }
    [[nodiscard]] HANDLE Process() const { return m_process.Get(); }
    [[nodiscard]] bool IsRunning() const;
    // The exit code once it has ended of its own accord; -1 when it has not within the limit.
    [[nodiscard]] long WaitForEnd(std::chrono::milliseconds limit = kPatience) const;

private:
    UniqueProcess m_process;
    DWORD m_id = 0;
};

}  // namespace brennvar::test
