#include "prompts/ActivitySources_win.h"

#include <chrono>
#include <utility>

#include "ipc/PipeRecords.h"
#include "rules/TrustedPrograms.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// The next client waits as well: a service that does not answer leaves the process unknown soon.
constexpr PipePolicy kNamePolicy{.attempts = 5, .wait = 200ms, .pause = 200ms, .pendingLimit = 600ms};

// As much as the answer holds, and not only what a rule could hold: what tells stands at its end.
constexpr std::size_t kLongestPath = sizeof PidResolveAnswer::path - 1;

// More than are asked for again and again; a handle keeps what Windows knows of a process.
constexpr std::size_t kMostKnown = 64;

bool IsRunning(const UniqueProcess& process) {
    return process && ::WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT;
}

}  // namespace

WinActivitySources::WinActivitySources(std::string trustedFile, PipeConnector& connector, Clock& waits)
    : m_trustedFile(std::move(trustedFile)), m_pipes(connector, waits, kNamePolicy) {}

bool WinActivitySources::IsTrusted(std::string_view path) {
    return IsTrustedProgram(m_trustedFile, path);
}

std::optional<std::string> WinActivitySources::ProcessPath(std::uint32_t processId) {
    if (const auto known = m_known.find(processId); known != m_known.end()) {
        if (IsRunning(known->second.process)) return known->second.path;
        m_known.erase(known);
    }
    // Before the service is asked, so that its answer is about this very process.
    UniqueProcess process(::OpenProcess(SYNCHRONIZE, FALSE, processId));
    const std::optional<std::string> path = m_pipes.ResolveProcessPath(processId, kLongestPath);
    if (path && IsRunning(process)) {
        if (m_known.size() >= kMostKnown) m_known.clear();
        m_known[processId] = {.process = std::move(process), .path = *path};
    }
    return path;
}

}  // namespace brennvar
