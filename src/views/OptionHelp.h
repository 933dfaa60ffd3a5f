// One sentence on every option and button of the Options page: what it does and what it costs.
#pragma once

#include "config/Text.h"

namespace brennvar {

// Of a control of the page, by its number; of any other one that there is something to point at.
[[nodiscard]] Text OptionHelp(int control);

}  // namespace brennvar
