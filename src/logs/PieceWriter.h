// Writes a file piece by piece on a thread of its own, while the next piece is made.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>
#include <vector>

#include "base/NewFile.h"

namespace brennvar {

// Three pieces go round: one is filled, one waits, one is written. One thread puts them.
class PieceWriter {
public:
    struct Piece {
        std::vector<char> bytes;
        std::size_t size = 0;  // of them are to be written
    };

    // The file is borrowed, and nobody else's until Finish.
    explicit PieceWriter(NewFile& file);
    PieceWriter(const PieceWriter&) = delete;
    PieceWriter& operator=(const PieceWriter&) = delete;
    ~PieceWriter();  // what still waits is not written any more

    // Takes the piece over, for another one of any size and contents. Waits while the last one waits. False: the
    // file has failed and nothing more is written.
    [[nodiscard]] bool Put(Piece& piece);
    // All pieces have been written, or the file has failed. The last call.
    void Finish();

private:
    void Run();

    NewFile& m_file;
    std::mutex m_mutex;  // guards everything below
    std::condition_variable m_changed;
    Piece m_next;
    bool m_isWaiting = false;  // m_next is to be written
    bool m_isEnding = false;
    bool m_hasFailed = false;
    std::thread m_thread;  // last: it uses everything above
};

}  // namespace brennvar
