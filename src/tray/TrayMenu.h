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
    bool isDisabled = false;
    std::vector<TrayMenuItem> items = {};
    [[nodiscard]] bool IsSeparator() const { return command == 0 && items.empty(); }
};

// What the menu shows of the firewall.
struct TrayMenuState {
    ProtectionMode mode = ProtectionMode::Normal;  // checked
    std::optional<bool> isNetworkOn = {};          // what would leave it so is disabled; nothing: not known
};

// All of its items in their order.
[[nodiscard]] std::vector<TrayMenuItem> BuildTrayMenu(const Language& language, const TrayMenuState& state);
// Those that change the mode, which open as a menu of their own where the mode is shown.
[[nodiscard]] std::vector<TrayMenuItem> BuildModeMenu(const Language& language, ProtectionMode mode);

// Nothing for a command that does not change the mode.
[[nodiscard]] std::optional<ModeChange> ModeChangeOf(int command);

}  // namespace brennvar
