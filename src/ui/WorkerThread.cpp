#include "ui/WorkerThread.h"

#include <utility>

namespace brennvar {

CWorkerThread::CWorkerThread(std::function<void()> finished) : m_finished(std::move(finished)) {}

CWorkerThread::~CWorkerThread() {
    Stop();
}

bool CWorkerThread::Start(Job job) {
    if (m_thread.joinable()) return false;
    m_stop = std::make_unique<StopSignal>();
    m_running = true;
    try {
        m_thread = std::thread([this, job = std::move(job)] { Run(job); });
    } catch (...) {  // the system has no thread to spare, or no memory for one
        m_running = false;
    }
    return m_thread.joinable();
}

void CWorkerThread::Run(const Job& job) {
    try {
        job(*m_stop);
    } catch (...) {  // NOLINT(bugprone-empty-catch): the job is over, and its receiver sees what it left
    }
    m_running = false;
    try {
        m_finished();
    } catch (...) {  // NOLINT(bugprone-empty-catch): nothing may leave a thread's function
    }
}

void CWorkerThread::RequestStop() {
    if (m_thread.joinable()) m_stop->Request();
}

void CWorkerThread::Stop() {
    if (!m_thread.joinable()) return;
    m_stop->Request();
    m_thread.join();
}

}  // namespace brennvar
