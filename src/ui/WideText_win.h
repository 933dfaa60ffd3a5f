// Texts for what Windows itself paints or hands on, which would take their bytes for those of the system's
// language.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar {

// The text in UTF-16. What its bytes mean is said by the font that it is painted in.
[[nodiscard]] std::wstring Widen(const std::string& text, HFONT font);

}  // namespace brennvar
