// Typing in a list goes to a row that begins with what was typed. This keeps what was typed; a pause begins anew.
#pragma once

#include <chrono>
#include <string>

namespace brennvar {

class TypedSearch {
public:
    static constexpr std::chrono::milliseconds kPause{1000};

    // One more character, in lower case, at a time counted from any fixed point.
    void Type(char lower, std::chrono::milliseconds now);
    // What the row has to begin with, in lower case.
    [[nodiscard]] const std::string& Wanted() const { return m_typed; }
    // Where to look first; -1: no row has the focus. A longer text may still fit the row that was found, but a new
    // one, and the same letter again and again, goes on to the next.
    [[nodiscard]] int StartRow(int focusedRow) const;

private:
    std::string m_typed;
    std::chrono::milliseconds m_typedAt{};
    bool m_mayStay = false;
};

}  // namespace brennvar
