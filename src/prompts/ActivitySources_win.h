// Where the answers of the queue pipe come from: the service's list of trusted programs, and its pipe for the names
// of processes.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "base/Handles_win.h"
#include "ipc/Pipe.h"
#include "ipc/ServicePipes.h"
#include "prompts/ActivityServer.h"

namespace brennvar {

class WinActivitySources final : public ActivitySources {
public:
    // connector and waits are borrowed and belong to the thread that asks.
    WinActivitySources(std::string trustedFile, PipeConnector& connector, Clock& waits);

    [[nodiscard]] bool IsTrusted(std::string_view path) override;
    // The service is asked once for a process: its name does not change, and as long as there is a handle on it no
    // other process can get its id.
    [[nodiscard]] std::optional<std::string> ProcessPath(std::uint32_t processId) override;

private:
    struct KnownProcess {
        UniqueProcess process;
        std::string path;
    };

    const std::string m_trustedFile;
    ServicePipes m_pipes;
    std::map<std::uint32_t, KnownProcess> m_known;
};

}  // namespace brennvar
