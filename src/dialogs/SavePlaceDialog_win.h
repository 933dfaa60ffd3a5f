// Asks where a file is to be written, with Windows' own dialog.
#pragma once

#include <optional>

#include "base/Windows_win.h"
#include "dialogs/SaveWish.h"

namespace brennvar {

// Pumps messages until the user has answered. Nothing: the user would rather not. Whether an existing file is to be
// replaced has been asked.
[[nodiscard]] std::optional<SavePlace> AskSavePlace(HWND owner, const SaveWish& wish);

// The same for a file that is to be read; whether it is there is not asked.
[[nodiscard]] std::optional<std::string> AskOpenPath(HWND owner, const OpenWish& wish);

}  // namespace brennvar
