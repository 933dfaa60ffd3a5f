// Text for other programs.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar {

// Replaces what the clipboard holds; without effect while another program has it open. What the bytes of the text
// mean is said by the font that it is painted in.
void CopyToClipboard(HWND owner, const std::string& text, HFONT font);

}  // namespace brennvar
