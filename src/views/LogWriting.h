// Files and texts made of a log list, by a worker: one at a time, and the last one that was asked for waits until
// the one before has ended.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "logs/LogExport.h"
#include "ui/WorkerThread.h"

namespace brennvar {

// User-interface thread only. Whoever owns it calls Poll every few milliseconds while it is busy.
class LogWriting {
public:
    struct Finished {
        bool isCopy = false;
        std::string path;  // of the file
        std::shared_ptr<const LogExportState> state;
    };

    // The worker is borrowed; somebody else stops it when it has finished.
    LogWriting(CWorkerThread& worker, std::shared_ptr<const LogTexts> texts, CodePage page);
    LogWriting(const LogWriting&) = delete;
    LogWriting& operator=(const LogWriting&) = delete;
    ~LogWriting() { Stop(); }

    void Export(LogSelection selection, const std::string& path, LogFormat format);
    void Copy(LogSelection selection);
    // What waits is dropped, what is under way ends soon.
    void Stop();

    [[nodiscard]] bool IsBusy() const { return m_next != nullptr || m_state != nullptr; }
    [[nodiscard]] bool IsCopy() const { return m_isCopy; }
    [[nodiscard]] std::uint64_t Done() const { return m_state ? m_state->done.load() : 0; }
    [[nodiscard]] std::uint64_t Total() const { return m_total; }
    // Begins what waits, as soon as the worker can; what has finished, once.
    [[nodiscard]] std::optional<Finished> Poll();

private:
    void Begin(CWorkerThread::Job job, std::shared_ptr<LogExportState> state, std::uint64_t total,
               std::string path);

    CWorkerThread& m_worker;
    const std::shared_ptr<const LogTexts> m_texts;
    const CodePage m_page;
    CWorkerThread::Job m_next;  // waits for the worker
    std::shared_ptr<LogExportState> m_state;
    bool m_isCopy = false;
    std::uint64_t m_total = 0;
    std::string m_path;
};

}  // namespace brennvar
