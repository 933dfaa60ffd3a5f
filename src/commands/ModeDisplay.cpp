#include "commands/ModeDisplay.h"

namespace brennvar {
namespace {

Text MeaningOf(ProtectionMode mode) {
    switch (mode) {
        case ProtectionMode::AllowAll: return Text{2466, "Nothing is filtered"};
        case ProtectionMode::BlockAll: return Text{2467, "All traffic is blocked"};
        default: return Text{2465, "Rules decide, unknown programs are asked about"};
    }
}

}  // namespace

ModeWords DescribeMode(const ModeDisplay& display, FileTime now, const std::string& endsAt,
                       const Language& language) {
    ModeWords words{.name = language.GetText(ProtectionModeText(display.mode)),
                    .left = {},
                    .meaning = language.GetText(MeaningOf(display.mode)),
                    .end = {}};
    if (!display.until) return words;
    if (*display.until <= now) {
        words.left = language.GetText(2468, "ending");
        words.end = language.GetText(2469, "ends at the next quiet second");
        return words;
    }
    constexpr FileTime kMinute = 60 * kFileTimePerSecond;
    const std::string minutes = std::to_string((*display.until - now + kMinute - 1) / kMinute);
    words.left = minutes + " " + language.GetText(1300, "min");
    words.end = FillText(language.GetText(2470, "until %1, %2 min left"), {endsAt, minutes});
    return words;
}

}  // namespace brennvar
