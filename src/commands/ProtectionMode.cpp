#include "commands/ProtectionMode.h"

namespace brennvar {

ProtectionMode ProtectionModeOf(std::uint32_t stored) {
    const auto mode = static_cast<ProtectionMode>(stored);
    return mode == ProtectionMode::AllowAll || mode == ProtectionMode::BlockAll ? mode : ProtectionMode::Normal;
}

Text ProtectionModeText(ProtectionMode mode) {
    switch (mode) {
        case ProtectionMode::AllowAll: return Text{44, "Allow All"};
        case ProtectionMode::BlockAll: return Text{42, "Block All"};
        default: return Text{43, "Normal"};
    }
}

Text ProtectionModeNotice(ProtectionMode mode) {
    switch (mode) {
        case ProtectionMode::AllowAll: return Text{309, "Allow All"};
        case ProtectionMode::BlockAll: return Text{307, "Block All"};
        default: return Text{308, "Normal"};
    }
}

}  // namespace brennvar
