#include "views/LogWriting.h"

#include <utility>

namespace brennvar {

LogWriting::LogWriting(CWorkerThread& worker, std::shared_ptr<const LogTexts> texts, CodePage page)
    : m_worker(worker), m_texts(std::move(texts)), m_page(page) {}

void LogWriting::Export(LogSelection selection, const std::string& path, LogFormat format) {
    const auto state = std::make_shared<LogExportState>();
    const std::uint64_t total = selection.count;
    Begin([selection = std::move(selection), path, format, texts = m_texts, page = m_page,
           state](const StopSignal& stop) { ExportLog(selection, path, format, *texts, page, stop, *state); },
          state, total, path);
    m_isCopy = false;
}

void LogWriting::Copy(LogSelection selection) {
    const auto state = std::make_shared<LogExportState>();
    const std::uint64_t total = selection.count;
    Begin([selection = std::move(selection), texts = m_texts,
           state](const StopSignal& stop) { CopyLog(selection, *texts, stop, *state); },
          state, total, {});
    m_isCopy = true;
}

void LogWriting::Begin(CWorkerThread::Job job, std::shared_ptr<LogExportState> state, std::uint64_t total,
                       std::string path) {
    Stop();
    m_next = std::move(job);
    m_state = std::move(state);
    m_total = total;
    m_path = std::move(path);
}

void LogWriting::Stop() {
    if (m_next) {  // it has not begun
        m_next = nullptr;
        m_state = nullptr;
    }
    m_worker.RequestStop();
}

std::optional<LogWriting::Finished> LogWriting::Poll() {
    if (m_next && m_worker.Start(m_next)) m_next = nullptr;
    if (m_next || !m_state || !m_state->isOver) return std::nullopt;
    return Finished{.isCopy = m_isCopy, .path = m_path, .state = std::exchange(m_state, nullptr)};
}

}  // namespace brennvar
