// A password in memory, and what one is compared with. Every copy of the security password that this program makes
// is one of these, or a buffer that is wiped where it is used. Out of reach are the copies that Windows makes: in
// the memory that an edit control outgrows while somebody types, in its buffer for undoing, on the way of a text
// out of it, and in the pipe.
#pragma once

#include <string_view>

#include "base/Wipe.h"

namespace brennvar {

// Overwritten when it goes; a copy or a captured one as well.
class Password {
public:
    static constexpr std::size_t kMaxLength = 119;  // an option's text, without its zero

    Password() = default;
    // What is longer is cut, as on its way to the service; so is what follows a zero.
    explicit Password(std::string_view text) { PutText(m_text, text); }
    Password(const Password&) = default;
    Password& operator=(const Password&) = default;
    ~Password() { WipeRecord(m_text); }

    // Valid as long as this object.
    [[nodiscard]] std::string_view View() const { return TextOf(m_text); }
    [[nodiscard]] bool IsEmpty() const { return View().empty(); }
    // Case matters.
    bool operator==(const Password& other) const { return View() == other.View(); }

private:
    char m_text[kMaxLength + 1] = {};
};

}  // namespace brennvar
