// The end of a protection mode that the user chose for a limited time. Only the control center remembers it: when
// it ends before the time is over, the mode stays as it is.
#pragma once

#include <cstdint>
#include <optional>

#include "base/Clock.h"
#include "commands/ProtectionMode.h"

namespace brennvar {

class ModeTimeout {
public:
    // Minutes from 1 to 4999 arm it, or set it anew. Everything else, Normal and an untimed mode above all, leaves
    // an earlier expiry as it is, so that it ends the mode that was chosen later as well.
    void OnModeChosen(const ModeChange& change, FileTime now);
    // Whether a mode that holds at this moment is over. Never for Normal, which has no end.
    [[nodiscard]] bool IsOver(ProtectionMode mode, FileTime now) const;
    // When the mode ends; nothing for one without an end.
    [[nodiscard]] std::optional<FileTime> ExpiryOf(ProtectionMode mode) const;
    friend bool operator==(const ModeTimeout&, const ModeTimeout&) = default;

private:
    std::optional<FileTime> m_expiry;
};

}  // namespace brennvar
