// Columns as wide as what they hold.
#pragma once

#include "tree/TreeState_win.h"

namespace brennvar {

// Widens columns, but for those that take room, until they hold their titles, the texts of TreeColumn::longest and,
// within reason, what a sample of the rows holds. None gets narrower. Does nothing without a window.
void FitToContent(TreeState& state);

}  // namespace brennvar
