// The menu of the notification icon as data, and what its commands for the protection mode mean.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/ProtectionMode.h"
#include "config/Language.h"

namespace brennvar {

struct TrayMenuItem {
    int command = 0;  // 0: a sub-menu, or a separator when it has no items
    std::string text = {};
    bool isChecked = false;
    std::vector<TrayMenuItem> items = {};
    [[nodiscard]] bool IsSeparator() const { return command == 0 && items.empty(); }
};

// All of its items in their order, with the mode that holds checked.
[[nodiscard]] std::vector<TrayMenuItem> BuildTrayMenu(const Language& language, ProtectionMode mode);

// Nothing for a command that does not change the mode.
[[nodiscard]] std::optional<ModeChange> ModeChangeOf(int command);

}  // namespace brennvar
