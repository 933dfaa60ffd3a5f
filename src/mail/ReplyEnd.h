// Whether a server has said all of its reply: the last line of one is three digits and a blank or nothing, every
// line before it three digits and a hyphen (RFC 5321, 4.2.1). Takes what comes piece by piece and keeps four
// characters of it.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace brennvar {

class ReplyEnd {
public:
    void Take(std::string_view piece);
    // True before anything has come. False after a last line that is no reply's, whatever it is: nobody knows then
    // what else comes.
    [[nodiscard]] bool IsReached() const { return m_isLastLine && m_length == 0; }

private:
    [[nodiscard]] bool EndsReply() const;

    std::array<char, 4> m_begin{};  // of the line that is coming
    std::size_t m_length = 0;       // characters of it so far
    bool m_isLastLine = true;
};

}  // namespace brennvar
