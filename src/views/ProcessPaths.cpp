#include "views/ProcessPaths.h"

namespace brennvar {
namespace {

// How long one round may ask the service for paths. Commands wait on the same thread; a service that answers at all
// normally answers hundreds of times in this time.
constexpr std::chrono::milliseconds kAskingTime{1000};
// How long another program's pipe is left alone. A call on it stands on that thread for six seconds, but only a
// call can tell that the service has its pipe again.
constexpr std::chrono::seconds kForeignPause{60};

}  // namespace

ProcessPaths AskForPaths(std::span<const std::uint32_t> processes, ServicePipes& pipes) {
    const auto end = std::chrono::steady_clock::now() + kAskingTime;
    ProcessPaths paths;
    for (const std::uint32_t id : processes) {
        std::optional<std::string> path = pipes.ResolveProcessPath(id);
        paths.emplace(id, std::move(path));
        if (!pipes.LastCallMetService() || std::chrono::steady_clock::now() >= end) break;
    }
    return paths;
}

bool IsWorthAskingForPaths(PeerState state, std::chrono::milliseconds sinceAsked) {
    switch (state) {
        case PeerState::Missing: return false;  // forgotten when another call meets it
        case PeerState::Foreign: return sinceAsked >= kForeignPause;
        default: return true;
    }
}

}  // namespace brennvar
