// Questions to the service that it answers at once: the path of a process, the next text for the tray.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "ipc/PipePolicy.h"

namespace brennvar {

// Size of a process path as the interface keeps it, its final zero included.
inline constexpr std::size_t kProcessPathSize = 260;

// Used by one thread at a time; every call opens a connection of its own and blocks for its waits.
class ServicePipes {
public:
    // Both are borrowed and must outlive the object.
    ServicePipes(PipeConnector& connector, Clock& clock, const PipePolicy& policy = kTransactPolicy)
        : m_connector(connector), m_clock(clock), m_policy(policy) {}

    // One message out, one message in. True when an answer of at least answer.size() bytes came; otherwise answer
    // is all zeros.
    bool PipeTransact(const std::string& pipeName, std::span<const std::byte> request, std::span<std::byte> answer);

    // At most 259 characters unless told otherwise, possibly none; the answer has room for 511. Nothing: the
    // service does not know the process or cannot be asked.
    [[nodiscard]] std::optional<std::string> ResolveProcessPath(std::uint32_t processId,
                                                                std::size_t longest = kProcessPathSize - 1);
    // At most 4095 characters. Nothing: there is no notice.
    [[nodiscard]] std::optional<std::string> FetchTrayText();

    // False after a call that did not find the service's pipe, or that got no answer in time: the next call would
    // wait as long again.
    [[nodiscard]] bool LastCallMetService() const { return m_lastCallMetService; }

private:
    PipeConnector& m_connector;
    Clock& m_clock;
    const PipePolicy m_policy;
    bool m_lastCallMetService = true;
};

}  // namespace brennvar
