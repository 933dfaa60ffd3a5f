#include "ipc/ServicePipes.h"

#include <algorithm>

#include "ipc/PipeRecords.h"
#include "ipc/PipeTransaction.h"

namespace brennvar {

bool ServicePipes::PipeTransact(const std::string& pipeName, std::span<const std::byte> request,
                                std::span<std::byte> answer) {
    std::fill(answer.begin(), answer.end(), std::byte{0});
    const CalledPipe pipe = CallPipe(m_connector, m_clock, pipeName, m_policy);
    m_lastCallMetService = pipe.isThere;
    if (!pipe.connection) return false;
    const PipeOutcome outcome = TransactWhole(*pipe.connection, request, answer, m_policy.pendingLimit);
    m_lastCallMetService = outcome != PipeOutcome::TimedOut;
    return outcome == PipeOutcome::Done;
}

std::optional<std::string> ServicePipes::ResolveProcessPath(std::uint32_t processId, std::size_t longest) {
    PidResolveRequest request{};
    request.code = kServiceRequestCode;
    request.processId = processId;
    PidResolveAnswer answer{};
    if (!PipeTransact(kPidResolvePipeName, RecordBytes(request), WritableRecordBytes(answer))) return std::nullopt;
    if (answer.status != kServiceAnswerValid) return std::nullopt;
    return std::string(TextOf(answer.path).substr(0, longest));
}

std::optional<std::string> ServicePipes::FetchTrayText() {
    TrayTextRequest request{};
    request.code = kServiceRequestCode;
    TrayTextAnswer answer{};
    if (!PipeTransact(kTrayPipeName, RecordBytes(request), WritableRecordBytes(answer))) return std::nullopt;
    if (answer.status != kServiceAnswerValid) return std::nullopt;
    return std::string(TextOf(answer.text));
}

}  // namespace brennvar
