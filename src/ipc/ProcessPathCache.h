// Process paths for one refresh of a view.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "ipc/ServicePipes.h"

namespace brennvar {

// Asks the service for each process id once. When the waits of a call found no service, everything that was not
// answered before counts as unknown: a refresh then waits for the service once and not once per process. To be made
// anew for each refresh, because process ids are used again and the service may come back.
class ProcessPathCache {
public:
    // Borrowed; must outlive the cache.
    explicit ProcessPathCache(ServicePipes& pipes) : m_pipes(pipes) {}

    // Nothing: unknown.
    [[nodiscard]] std::optional<std::string> operator()(std::uint32_t processId);

private:
    ServicePipes& m_pipes;
    std::unordered_map<std::uint32_t, std::optional<std::string>> m_paths;
    bool m_serviceMissing = false;
};

}  // namespace brennvar
