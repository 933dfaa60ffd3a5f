// What may take for ever and is of no use to the program afterwards, such as having the shell start a browser.
#pragma once

#include <functional>
#include <thread>
#include <utility>

namespace brennvar {

// Does it on a thread of its own for which nobody waits, the end of the process neither. It owns what it uses; what
// it throws is dropped. False when the system has no thread or memory to spare: it is not done.
inline bool RunDetached(std::function<void()> task) {
    try {
        std::thread([task = std::move(task)] {
            try {
                task();
            } catch (...) {  // NOLINT(bugprone-empty-catch): nobody waits for what comes of it
            }
        }).detach();
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace brennvar
