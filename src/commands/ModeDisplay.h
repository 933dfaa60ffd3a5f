// The mode in force as it is shown to the user.
#pragma once

#include <optional>

#include "base/Clock.h"
#include "commands/ProtectionMode.h"

namespace brennvar {

struct ModeDisplay {
    ProtectionMode mode = ProtectionMode::Normal;
    std::optional<FileTime> until;  // when it goes back to Normal; nothing: it stays until it is changed
    friend bool operator==(const ModeDisplay&, const ModeDisplay&) = default;
};

}  // namespace brennvar
