// The service's web-filter queue: the list of filtered sites and the port of the filtering proxy.
#pragma once

#include <cstdint>
#include <string_view>

#include "ipc/PipePolicy.h"
#include "ipc/PipeRecords.h"

namespace brennvar {

// Every call waits once for the pipe, at most 20 s, and an answer may take a minute: to be called on the link
// thread. Failures are silent; the list is read again afterwards.
class FilterQueue {
public:
    // Both are borrowed and must outlive the queue.
    FilterQueue(PipeConnector& connector, Clock& clock) : m_connector(connector), m_clock(clock) {}

    void FILTER_PUT_ENTRY(std::uint32_t number, std::string_view text, std::uint32_t value);
    void FILTER_SET_PROXY_PORT(std::uint32_t port);
    // 1 or 2 as the service answered, 0 when there is no valid answer.
    [[nodiscard]] std::uint32_t FILTER_QUERY(std::string_view text);
    void FILTER_ADD_ENTRY(std::string_view text);
    // False when that was in vain: the service was missing or did not answer in time.
    bool FILTER_DELETE_ENTRY(std::uint32_t entryId);

private:
    void QueueWrite(const FilterQueueRecord& record);
    // answer: all zeros when none came. False as above.
    bool QueueTransact(const FilterQueueRecord& request, FilterQueueRecord& answer);

    PipeConnector& m_connector;
    Clock& m_clock;
};

}  // namespace brennvar
