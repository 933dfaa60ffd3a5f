// Text for other programs.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar {

// Replaces what the clipboard holds; without effect while another program has it open.
void CopyToClipboard(HWND owner, const std::string& text);

}  // namespace brennvar
