#include "app/ModeLink_win.h"

#include <utility>

#include "config/Folders_win.h"
#include "config/OptionTable.h"
#include "config/Options.h"

namespace brennvar {
namespace {

using When = ProtectionModes::Parts::When;

// What the service needs to rewrite its options.
constexpr std::chrono::milliseconds kWritingPause{200};

ProtectionMode ReadMode(When when, Clock& clock) {
    if (when == When::WhenWritten) (void)clock.Sleep(kWritingPause);  // cut short, nobody waits for the mode
    return ProtectionModeOf(
        OptionReader(GetDataFolder(), clock).ReadOption(static_cast<std::uint32_t>(OptionId::ProtectionMode), 0));
}

}  // namespace

ProtectionModes::Parts ConnectModes(Clock& clock, const Language& language, ServiceLink& link, TaskThread& reads,
                                    Clock& readsClock) {
    return {.clock = clock,
            .language = language,
            .checkPassword = {},
            .send =
                [&link](std::function<void(CommandPipe&)> task, std::function<void()> delivered) {
                    link.Send(std::move(task), [delivered = std::move(delivered)](bool) { delivered(); });
                },
            .read =
                [&reads, &readsClock](When when, std::function<void(ProtectionMode)> done) {
                    reads.Ask<ProtectionMode>([when, &readsClock] { return ReadMode(when, readsClock); },
                                              [done = std::move(done)](std::optional<ProtectionMode> mode) {
                                                  done(mode.value_or(ProtectionMode::Normal));
                                              });
                },
            .changed = {},
            .idleModeRead = {}};
}

}  // namespace brennvar
