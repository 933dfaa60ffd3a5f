// The groups in which options are changed: a whole group is sent at once, then the event, then the commands that
// make the service use the new values.
#pragma once

#include <span>
#include <string>

#include "config/OptionTable.h"
#include "config/OptionValues.h"
#include "config/Text.h"
#include "ipc/CommandPipe.h"

namespace brennvar {

struct OptionFollowUp {
    void (CommandPipe::*send)();
    OptionId onlyAfterChangeOf = {};  // none: always
};

struct OptionGroup {
    Text name;                          // the event's subject
    std::span<const OptionId> options;  // in the order in which they are sent
    std::span<const OptionFollowUp> followUps;
};

extern const OptionGroup kGeneralOptions;
extern const OptionGroup kEnhancementOptions;
extern const OptionGroup kLoggingOptions;
extern const OptionGroup kMiscellaneousOptions;
extern const OptionGroup kIcmpOptions;
extern const OptionGroup kFileSharingOptions;

// The event in the language of the user, since the service stores texts.
struct OptionEvent {
    std::string title;
    std::string subject;
};

// Sends all of it, one command after the other; for the link thread, as one task, so that nothing comes in between.
// before: as the service had stored the options when the user applied them.
void SendOptionGroup(const OptionGroup& group, const OptionValues& wanted, const OptionValues& before,
                     const OptionEvent& event, CommandPipe& pipe);

// True when both agree about every option of the group.
[[nodiscard]] bool GroupIsSame(const OptionGroup& group, const OptionValues& left, const OptionValues& right);

}  // namespace brennvar
