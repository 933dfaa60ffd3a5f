#include "commands/ModeDisplay.h"

namespace brennvar {

std::string FormatMode(const ModeDisplay& display, FileTime now, const Language& language) {
    std::string text = language.GetText(ProtectionModeText(display.mode));
    if (!display.until) return text;
    constexpr FileTime kMinute = 60 * kFileTimePerSecond;
    const FileTime left = *display.until > now ? *display.until - now : 0;
    text += ", ";
    text += std::to_string((left + kMinute - 1) / kMinute);
    text += " ";
    return text + language.GetText(1300, "min");
}

}  // namespace brennvar
