// The language of a question. The user may have chosen another one since the program was started.
#pragma once

#include <cstdint>

#include "config/Language.h"

namespace brennvar {

struct QuestionWords {
    Language language{nullptr};
    std::uint8_t charset = 0;  // of the fonts that show its texts, see GetFontCharset
};

}  // namespace brennvar
