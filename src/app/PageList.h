// The pages of the control center in the order of their buttons.
#pragma once

#include <span>
#include <string_view>

namespace brennvar {

struct PageInfo {
    int command;  // opens the page, from the menu and its button alike; also the button's control number
    int captionNumber;
    std::string_view caption;  // English
    int lineNumber;            // what the page shows, in one line
    std::string_view line;     // English
};

[[nodiscard]] std::span<const PageInfo> PageList();

}  // namespace brennvar
