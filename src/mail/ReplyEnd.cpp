#include "mail/ReplyEnd.h"

#include <algorithm>

namespace brennvar {

void ReplyEnd::Take(std::string_view piece) {
    for (const char c : piece) {
        if (c == '\n') {
            m_isLastLine = EndsReply();
            m_length = 0;
        } else {
            if (m_length < m_begin.size()) m_begin[m_length] = c;
            ++m_length;
        }
    }
}

bool ReplyEnd::EndsReply() const {
    constexpr std::size_t kDigits = 3;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (m_length < kDigits || !std::all_of(m_begin.begin(), m_begin.begin() + kDigits, isDigit)) return false;
    return m_length == kDigits || m_begin[kDigits] == ' ' || m_begin[kDigits] == '\r';
}

}  // namespace brennvar
