// Rows of a tree as text: for the clipboard, screen readers and automation.
#pragma once

#include <string>

#include "tree/TreeState_win.h"

namespace brennvar {

// More rows than these are not copied.
inline constexpr int kMostCopiedRows = 100'000;

// The cells, separated by tabs, in one line; empty for a row that does not exist.
[[nodiscard]] std::string TextOfRow(const TreeState& state, int row);
// The selected rows to the clipboard, one line each.
void CopySelection(const TreeState& state);

}  // namespace brennvar
