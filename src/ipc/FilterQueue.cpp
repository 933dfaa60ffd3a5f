#include "ipc/FilterQueue.h"

#include "ipc/PipeTransaction.h"
#include "ipc/PipeWriteOnce.h"

namespace brennvar {
namespace {

FilterQueueRecord RequestOf(FilterCode code) {
    FilterQueueRecord request{};
    request.code = static_cast<std::uint32_t>(code);
    return request;
}

}  // namespace

void FilterQueue::QueueWrite(const FilterQueueRecord& record) {
    // Nothing to do when the service is not there.
    (void)PipeWriteOnce(m_connector, m_clock, kFilterQueuePipeName, RecordBytes(record));
}

bool FilterQueue::QueueTransact(const FilterQueueRecord& request, FilterQueueRecord& answer) {
    const auto connection = CallPipe(m_connector, m_clock, kFilterQueuePipeName, kQueueTransactPolicy).connection;
    if (!connection) return false;
    // A failed transaction leaves zeros, which no valid answer is.
    return TransactWhole(*connection, RecordBytes(request), WritableRecordBytes(answer),
                         kQueueTransactPolicy.pendingLimit) != PipeOutcome::TimedOut;
}

void FilterQueue::FILTER_PUT_ENTRY(std::uint32_t number, std::string_view text, std::uint32_t value) {
    FilterQueueRecord request = RequestOf(FilterCode::PutEntry);
    request.number = number;
    PutText(request.text, text);
    request.entryOrValue = value;
    QueueWrite(request);
}

void FilterQueue::FILTER_SET_PROXY_PORT(std::uint32_t port) {
    FilterQueueRecord request = RequestOf(FilterCode::SetProxyPort);
    request.number = port;
    QueueWrite(request);
}

std::uint32_t FilterQueue::FILTER_QUERY(std::string_view text) {
    FilterQueueRecord request = RequestOf(FilterCode::Query);
    PutText(request.text, text);
    FilterQueueRecord answer{};
    (void)QueueTransact(request, answer);
    if (answer.code != kFilterAnswerValid) return 0;
    return answer.answerValue == 1 || answer.answerValue == 2 ? answer.answerValue : 0;
}

void FilterQueue::FILTER_ADD_ENTRY(std::string_view text) {
    FilterQueueRecord request = RequestOf(FilterCode::AddEntry);
    PutText(request.text, text);
    FilterQueueRecord answer{};
    (void)QueueTransact(request, answer);  // the list itself shows whether the entry was taken
}

bool FilterQueue::FILTER_DELETE_ENTRY(std::uint32_t entryId) {
    FilterQueueRecord request = RequestOf(FilterCode::DeleteEntry);
    request.entryOrValue = entryId;
    FilterQueueRecord answer{};
    return QueueTransact(request, answer);
}

}  // namespace brennvar
