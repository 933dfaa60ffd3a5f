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

// The mode in words. Each minute that has begun counts. When the time is over only the traffic keeps the mode.
struct ModeWords {
    std::string name;     // "Allow All"
    std::string left;     // "4 min", "ending"; empty for a mode without an end
    std::string meaning;  // "Nothing is filtered"
    std::string end;      // "until 14:28, 4 min left", "ends at the next quiet second"; empty like left
    friend bool operator==(const ModeWords&, const ModeWords&) = default;
};
// endsAt: the time of the day when a timed mode ends, for people of this place.
[[nodiscard]] ModeWords DescribeMode(const ModeDisplay& display, FileTime now, const std::string& endsAt,
                                     const Language& language);

}  // namespace brennvar
