// The fonts of questions, by the character set of their language, which need not be that of the program's windows.
#pragma once

#include <cstdint>
#include <map>

#include "ui/Fonts_win.h"

namespace brennvar {

class QuestionFonts {
public:
    // Valid as long as this object.
    [[nodiscard]] const CFonts& For(std::uint8_t charset) {
        return m_fonts.try_emplace(charset, charset).first->second;
    }

private:
    std::map<std::uint8_t, CFonts> m_fonts;
};

}  // namespace brennvar
