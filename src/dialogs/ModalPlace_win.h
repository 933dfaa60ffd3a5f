// Where a modal dialog may open.
#pragma once

#include <optional>

#include "base/Windows_win.h"

namespace brennvar {

// What a dialog that belongs to a window has to be opened over: the window itself, shown or not, or, where another
// dialog of it is open, that one. Nothing when neither takes input now: something has to be answered first that
// stands by itself. Null needs no owner.
[[nodiscard]] std::optional<HWND> ModalOwner(HWND window);
// A question of this thread that stands by itself, above all windows, and takes input: what cannot wait for its
// answer opens over it. Null without one.
[[nodiscard]] HWND StandingQuestion();

}  // namespace brennvar
