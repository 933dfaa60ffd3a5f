// Sees to it that something comes to its end: what is being torn down can wait for threads that the disk, the shell
// or another program holds up, and nobody can end those.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

#include "base/StopSignal.h"

namespace brennvar {

class EndWatch {
public:
    // Unless the object goes before, overdue is called when the limit has passed, on a thread of its own; it is
    // meant to end the process. Without a thread or memory to spare nothing is watched.
    EndWatch(std::chrono::milliseconds limit, std::function<void()> overdue);
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;
    ~EndWatch();

private:
    StopSignal m_isOver;
    std::thread m_thread;  // last: it uses the signal
};

}  // namespace brennvar
