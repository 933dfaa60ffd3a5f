// What windows show of the protection mode.
#pragma once

#include <optional>
#include <string>

#include "base/Clock.h"
#include "commands/ProtectionMode.h"
#include "config/Language.h"

namespace brennvar {

struct ModeDisplay {
    ProtectionMode mode = ProtectionMode::Normal;  // as the service had stored it when it was read last
    std::optional<FileTime> until;                 // a timed mode: when it ends
    friend bool operator==(const ModeDisplay&, const ModeDisplay&) = default;
};

// "Normal" or "Allow All, 4 min". Each minute that has begun counts; 0 min: the time is over, and only the traffic
// keeps the mode.
[[nodiscard]] std::string FormatMode(const ModeDisplay& display, FileTime now, const Language& language);

}  // namespace brennvar
