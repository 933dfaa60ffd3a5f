#include "commands/ModeTimeout.h"

namespace brennvar {
namespace {

constexpr std::uint32_t kMostMinutes = 4999;
constexpr FileTime kFileTimePerMinute = 60 * kFileTimePerSecond;

}  // namespace

void ModeTimeout::OnModeChosen(const ModeChange& change, FileTime now) {
    if (change.mode == ProtectionMode::Normal || change.minutes < 1 || change.minutes > kMostMinutes) return;
    m_expiry = now + change.minutes * kFileTimePerMinute;
}

bool ModeTimeout::IsOver(ProtectionMode mode, FileTime now) const {
    const std::optional<FileTime> expiry = ExpiryOf(mode);
    return expiry && now >= *expiry;
}

std::optional<FileTime> ModeTimeout::ExpiryOf(ProtectionMode mode) const {
    return mode == ProtectionMode::Normal ? std::nullopt : m_expiry;
}

}  // namespace brennvar
