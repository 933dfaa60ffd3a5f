// Texts that may be passwords, of any length, and the wiping of those that other classes made.
#pragma once

#include <string>
#include <string_view>

#include "base/Wipe.h"

namespace brennvar {

// Overwrites all that the text has room for, and empties it.
inline void WipeText(std::string& text) {
    text.resize(text.capacity());
    WipeMemory(text.data(), text.size());
    text.clear();
}

// A text that is overwritten when it ends or gets another one; so is every copy, and what it was made of by moving.
// Takes the place of a std::string where some of the texts are passwords, hence the conversions.
class WipedText {
public:
    WipedText() = default;
    WipedText(std::string_view text) : m_text(text) {}
    WipedText(const std::string& text) : m_text(text) {}
    WipedText(const char* text) : m_text(text) {}
    WipedText(std::string&& text) : m_text(text) { WipeText(text); }
    WipedText(const WipedText& other) = default;
    WipedText& operator=(const WipedText& other) {
        if (this == &other) return *this;
        WipeText(m_text);
        m_text = other.m_text;
        return *this;
    }
    ~WipedText() { WipeText(m_text); }

    [[nodiscard]] const std::string& Text() const { return m_text; }
    operator const std::string&() const { return m_text; }
    operator std::string_view() const { return m_text; }
    friend bool operator==(const WipedText& left, const WipedText& right) { return left.m_text == right.m_text; }

private:
    std::string m_text;
};

}  // namespace brennvar
