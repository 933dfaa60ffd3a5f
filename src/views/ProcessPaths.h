// Asks the service for the paths of many processes without keeping what waits behind it.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>

#include "ipc/ServicePipes.h"
#include "ipc/WatchedConnector.h"

namespace brennvar {

// What the service said of each process: its path, or nothing when it does not know it.
using ProcessPaths = std::unordered_map<std::uint32_t, std::optional<std::string>>;

// Asks for each process once, in this order, until a second is over or a call has not met the service: a missing
// service is waited for once. What was not asked is not in the answer. On the link thread.
[[nodiscard]] ProcessPaths AskForPaths(std::span<const std::uint32_t> processes, ServicePipes& pipes);

// Whether the pipe for paths, in this state, is to be called: a call to a missing service stands on the link thread
// for long. sinceAsked: the time since it was called last.
[[nodiscard]] bool IsWorthAskingForPaths(PeerState state, std::chrono::milliseconds sinceAsked);

}  // namespace brennvar
