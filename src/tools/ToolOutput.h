// What a tool prints: lines of text, from its worker thread to the list of its dialog. A console program has an
// output of its own.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>

namespace brennvar {

class ToolOutput {
public:
    virtual ~ToolOutput() = default;
    // One line, without an end of line. On the thread of the tool.
    virtual void Print(const std::string& line) = 0;
    // Takes back what was printed, where that is possible: it said that something else is to come.
    virtual void Clear() {}
};

// The lines between the two threads. What is not printable, and could only be meant to confuse who reads it, is a
// blank: lines come from peers.
class ToolLines final : public ToolOutput {
public:
    // wake is called on the printing thread when there is something to take where nothing was; it must not wait.
    explicit ToolLines(std::function<void()> wake) : m_wake(std::move(wake)) {}

    void Print(const std::string& line) override;
    void Clear() override;

    struct Taken {
        bool isAnew = false;    // all that was taken before counts no more
        std::string text;       // lines with "\n" between them
        std::size_t count = 0;  // of the lines
        bool hasMore = false;   // nobody is woken for these
    };
    // The oldest lines, at most so many. Any thread.
    [[nodiscard]] Taken Take(std::size_t most);

private:
    const std::function<void()> m_wake;
    std::mutex m_mutex;  // guards what follows
    std::deque<std::string> m_lines;
    bool m_isAnew = false;
};

}  // namespace brennvar
