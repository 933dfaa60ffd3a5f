// The pages of the control center in the order of their buttons.
#pragma once

#include <span>

#include "config/Text.h"

namespace brennvar {

struct PageInfo {
    int command;  // opens the page, from the menu and its button alike; also the button's control number
    Text caption;
    Text line;  // what the page shows, in one line
};

[[nodiscard]] std::span<const PageInfo> PageList();

}  // namespace brennvar
