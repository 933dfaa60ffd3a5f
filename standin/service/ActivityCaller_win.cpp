#include "service/ActivityCaller_win.h"

namespace brennvar::standin {
namespace {

constexpr DWORD kPauseMilliseconds = 20;  // until the interface has its pipe, or has time

}  // namespace

ActivityCaller::ActivityCaller(const Stop& stop, Journal& journal, Progress& progress)
    : m_stop(stop), m_journal(journal), m_progress(progress), m_thread([this] { Run(); }) {}

ActivityCaller::~ActivityCaller() {
    ::SetEvent(m_put.Get());
    m_thread.join();
}

void ActivityCaller::Put(const ActivityQueueMessage& request) {
    {
        const std::scoped_lock lock(m_lock);
        m_requests.push_back(request);
    }
    ::SetEvent(m_put.Get());
}

void ActivityCaller::Run() {
    for (;;) {
        std::optional<ActivityQueueMessage> request;
        {
            const std::scoped_lock lock(m_lock);
            if (!m_requests.empty()) {
                request = m_requests.front();
                m_requests.pop_front();
            }
        }
        if (!request) {
            const HANDLE events[] = {m_stop.Event(), m_put.Get()};
            ::WaitForMultipleObjects(2, events, FALSE, INFINITE);
            if (m_stop.Requested()) return;
            continue;
        }
        const UniqueFile pipe = Connect();
        if (!pipe) return;
        if (const auto answer = Exchange(pipe.Get(), *request)) {
            m_journal.Record(Channel::Activity, RecordBytes(*answer));
        } else {
            m_journal.Event("activity-unanswered " + std::to_string(static_cast<std::uint32_t>(request->kind)));
        }
        m_progress.Add(Channel::Activity);
    }
}

UniqueFile ActivityCaller::Connect() const {
    do {
        UniqueFile pipe(::CreateFileA(kActivityPipeName, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_OVERLAPPED, nullptr));
        DWORD mode = PIPE_READMODE_MESSAGE;
        if (pipe && ::SetNamedPipeHandleState(pipe.Get(), &mode, nullptr, nullptr)) return pipe;
    } while (!m_stop.Sleep(kPauseMilliseconds));
    return UniqueFile();
}

std::optional<ActivityQueueMessage> ActivityCaller::Exchange(HANDLE pipe, ActivityQueueMessage request) const {
    ActivityQueueMessage answer{};
    OVERLAPPED operation{};
    operation.hEvent = m_done.Get();
    if (!::TransactNamedPipe(pipe, &request, sizeof request, &answer, sizeof answer, nullptr, &operation) &&
        ::GetLastError() != ERROR_IO_PENDING) {
        return std::nullopt;
    }
    const HANDLE events[] = {m_done.Get(), m_stop.Event()};
    if (::WaitForMultipleObjects(2, events, FALSE, INFINITE) != WAIT_OBJECT_0) ::CancelIoEx(pipe, &operation);
    DWORD size = 0;
    if (!::GetOverlappedResult(pipe, &operation, &size, TRUE) || size != sizeof answer) return std::nullopt;
    return answer;
}

}  // namespace brennvar::standin
