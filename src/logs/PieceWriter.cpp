#include "logs/PieceWriter.h"

#include <utility>

namespace brennvar {

PieceWriter::PieceWriter(NewFile& file) : m_file(file), m_thread([this] { Run(); }) {}

PieceWriter::~PieceWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_isWaiting = false;
    }
    Finish();
}

bool PieceWriter::Put(Piece& piece) {
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_isWaiting || m_hasFailed; });
        if (m_hasFailed) return false;
        std::swap(piece, m_next);
        m_isWaiting = true;
    }
    m_changed.notify_all();
    return true;
}

void PieceWriter::Finish() {
    if (!m_thread.joinable()) return;
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void PieceWriter::Run() {
    Piece piece;
    std::unique_lock lock(m_mutex);
    while (!m_hasFailed) {
        m_changed.wait(lock, [this] { return m_isWaiting || m_isEnding; });
        if (!m_isWaiting) return;
        std::swap(piece, m_next);
        m_isWaiting = false;
        lock.unlock();
        m_changed.notify_all();
        m_file.Write({piece.bytes.data(), piece.size});
        lock.lock();
        m_hasFailed = m_file.Result() != WriteResult::Written;
    }
    lock.unlock();
    m_changed.notify_all();
}

}  // namespace brennvar
