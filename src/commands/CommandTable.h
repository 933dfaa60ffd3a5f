// Everything that this process tells the service, in one table: what is sent and in which order, which event the
// service then records, whether the security password stands before it, and whether the user is asked first.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "config/OptionTable.h"
#include "config/Text.h"
#include "ipc/CommandRecord.h"

namespace brennvar {

enum class UserCommand {
    // The program itself
    Start,
    Exit,
    PasswordEntered,
    PasswordRefused,
    // The protection mode and the network
    SetMode,
    EndTimedMode,
    SwitchNetwork,
    ReloadNetwork,
    ReportClockSetBack,
    ReportClockSetAhead,
    // Options
    ApplyGeneral,
    ApplyEnhancements,
    ApplyLogging,
    ApplyMiscellaneous,
    ApplyIcmp,
    ApplyFileSharing,
    SetPassword,
    SetResources,
    AddTrusted,
    ResetTrusted,
    ResetFingerprints,
    ResetFirewall,
    SendTestMail,
    UpdateSignatures,
    DeleteLogs,
    // Applications and connections
    SetApplicationRules,
    ExportRules,
    ImportApplicationRules,
    ImportAdvancedRules,
    AddAdvancedRule,
    ChangeAdvancedRules,
    DeleteAdvancedRules,
    MoveAdvancedRules,
    TerminateProcess,
    BlockAddress,
    TrustProgram,
};
inline constexpr UserCommand kLastUserCommand = UserCommand::TrustProgram;

// As the service's log knows them.
enum class EventSeverity : std::uint32_t {
    Notice = 0,   // settings
    Warning = 2,  // something was blocked or ended, the clock was changed
};

// The values of command 25, which switches all network connections.
inline constexpr std::uint32_t kNetworkOff = 0;
inline constexpr std::uint32_t kNetworkOn = 1;

// One command, or several of the same code where the batch carries a list for it (options, rules).
struct CommandStep {
    CommandCode code;
    std::optional<std::uint32_t>
        value{};                   // of commands with a value that is always the same; else the batch has it
    OptionId onlyAfterChangeOf{};  // sent only when the batch changes this option; none: always
};

struct CommandInfo {
    UserCommand command;
    bool isProtected;                    // the security password stands before it
    Text question;                       // the user has to agree first; none: nothing is asked
    std::span<const CommandStep> steps;  // in the order in which they are sent
    Text event;                          // its title, sent after the steps; none: no event
    Text subject;                        // of the event; none: the batch has it
    EventSeverity severity = EventSeverity::Notice;
    Text verb{};  // what agreeing does, on its button; of commands with a question
};

[[nodiscard]] const CommandInfo& InfoOf(UserCommand command);
// Applies a group of options; there is one for each group but None and BrowserFiltering.
[[nodiscard]] UserCommand CommandOf(OptionGroup group);

}  // namespace brennvar
