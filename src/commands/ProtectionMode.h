// How much the firewall lets through at present. The service keeps the mode as option 1; the interface asks for
// another one and reads it back.
#pragma once

#include <cstdint>

#include "config/Text.h"

namespace brennvar {

enum class ProtectionMode : std::uint32_t { Normal = 0, AllowAll = 1, BlockAll = 2 };

// A value that the service has stored; an unknown one counts as Normal.
[[nodiscard]] ProtectionMode ProtectionModeOf(std::uint32_t stored);
// As it stands in menus and on pages.
[[nodiscard]] Text ProtectionModeText(ProtectionMode mode);
// As the service records it when the user has changed to it.
[[nodiscard]] Text ProtectionModeNotice(ProtectionMode mode);

// What a command of the user asks for.
struct ModeChange {
    ProtectionMode mode = ProtectionMode::Normal;
    std::uint32_t minutes = 0;  // then back to Normal; 0: until it is changed again
    friend bool operator==(const ModeChange&, const ModeChange&) = default;
};

}  // namespace brennvar
