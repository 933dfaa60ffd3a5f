#include "commands/CommandTable.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace brennvar {
namespace {

using Code = CommandCode;
using Step = CommandStep;

constexpr Step kStart[] = {{Code::SetRunState, 1}, {Code::ReloadApplicationRules}, {Code::SetValue10, 0}};
constexpr Step kExit[] = {{Code::ShutdownFirst}, {Code::ShutdownSecond}};
constexpr Step kMode[] = {{Code::SetOption}, {Code::ReloadAdvancedRules}};
constexpr Step kNetwork[] = {{Code::SetValue25}};
constexpr Step kReloadAdvanced[] = {{Code::ReloadAdvancedRules}};
constexpr Step kGeneral[] = {
    {Code::SetOption}, {.code = Code::Option7On, .onlyAfterChangeOf = OptionId::LoadAtStartup}, {Code::Option7Off}};
constexpr Step kEnhancements[] = {{Code::SetOption}, {Code::ReloadOptions}, {Code::ReloadAdvancedRules}};
constexpr Step kOptionsOnly[] = {{Code::SetOption}};
constexpr Step kIcmp[] = {{Code::SetOption}, {Code::ReloadOptions}};
constexpr Step kFileSharing[] = {{Code::SetOption}, {Code::ReloadAdvancedRules}};
constexpr Step kPassword[] = {{Code::SetOptionText}};
constexpr Step kResources[] = {{Code::SetSkin}, {Code::SetLanguage}};
constexpr Step kResetTrusted[] = {{Code::ResetTrusted}};
// The command that switches the network follows, so that it stays as it is.
constexpr Step kResetFingerprints[] = {{Code::ResetFingerprints}, {Code::SetValue25}};
constexpr Step kReset[] = {{Code::Reset}};
constexpr Step kTestMail[] = {{Code::SendTestMail}};
constexpr Step kUpdate[] = {{Code::ReloadSignatures}};
constexpr Step kDeleteLogs[] = {{Code::DeleteLogs}};
constexpr Step kApplicationRules[] = {{Code::SetApplicationRule}};
constexpr Step kReloadApplications[] = {{Code::ReloadApplicationRules}};
constexpr Step kAddAdvanced[] = {{Code::AddAdvancedRule}, {Code::ReloadAdvancedRules}};
constexpr Step kChangeAdvanced[] = {{Code::ModifyAdvancedRule}, {Code::ReloadAdvancedRules}};
constexpr Step kDeleteAdvanced[] = {{Code::DeleteAdvancedRule}, {Code::ReloadAdvancedRules}};
constexpr Step kMoveAdvanced[] = {
    {Code::MoveAdvancedRuleUp}, {Code::MoveAdvancedRuleDown}, {Code::ReloadAdvancedRules}};
constexpr Step kTerminate[] = {{Code::TerminateProcess}};
constexpr Step kBlock[] = {{Code::BlockAddress}};
constexpr Step kTrust[] = {{Code::AllowProcessText}};

constexpr bool kFree = false;
constexpr bool kProtected = true;
constexpr Text kNothing{};
constexpr Text kOptionsChanged = Text{195, "Options changed"};

// Ordered as the enumeration.
constexpr CommandInfo kCommands[] = {
    {UserCommand::Start, kFree, kNothing, kStart, kNothing, kNothing},
    {UserCommand::Exit, kProtected,
     Text{505,
          "Do you really want to exit Brennvar Personal Firewall? Warning: After this action, your system will be "
          "not "
          "protected against internet threats and your active connections could be lost. Continue anyway?"},
     kExit, kNothing, kNothing, EventSeverity::Notice, Text{2481, "Exit"}},
    {UserCommand::PasswordEntered, kFree, kNothing, {}, Text{186, "Security password entered"}, Text{187, "Valid"}},
    {UserCommand::PasswordRefused,
     kFree,
     kNothing,
     {},
     Text{186, "Security password entered"},
     Text{188, "Invalid"}},

    {UserCommand::SetMode, kProtected, kNothing, kMode, Text{306, "Security level changed"}, kNothing},
    {UserCommand::EndTimedMode, kFree, kNothing, kMode, kNothing, kNothing},
    {UserCommand::SwitchNetwork, kFree, kNothing, kNetwork, kNothing, kNothing},
    {UserCommand::ReloadNetwork, kFree, kNothing, kReloadAdvanced, kNothing, kNothing},
    {UserCommand::ReportClockSetBack,
     kFree,
     kNothing,
     {},
     Text{59, "System time changed"},
     Text{60, "Past"},
     EventSeverity::Warning},
    {UserCommand::ReportClockSetAhead,
     kFree,
     kNothing,
     {},
     Text{59, "System time changed"},
     Text{62, "Future"},
     EventSeverity::Warning},

    {UserCommand::ApplyGeneral, kProtected, kNothing, kGeneral, kOptionsChanged, Text{196, "General"}},
    // Spelled so in every language file of old, and in the service's log.
    {UserCommand::ApplyEnhancements, kProtected, kNothing, kEnhancements, kOptionsChanged,
     Text{198, "Enhacements"}},
    {UserCommand::ApplyLogging, kProtected, kNothing, kOptionsOnly, kOptionsChanged, Text{201, "Logging"}},
    {UserCommand::ApplyMiscellaneous, kProtected, kNothing, kOptionsOnly, kOptionsChanged,
     Text{204, "Miscellaneous"}},
    {UserCommand::ApplyIcmp, kProtected, kNothing, kIcmp, kOptionsChanged, Text{1200, "ICMP"}},
    {UserCommand::ApplyFileSharing, kProtected, kNothing, kFileSharing, kOptionsChanged,
     Text{1201, "File sharing"}},
    // Its dialog asks for the old one.
    {UserCommand::SetPassword, kFree, kNothing, kPassword, kOptionsChanged, Text{197, "Password"}},
    {UserCommand::SetResources, kFree,
     Text{58,
          "Your skin and language setting has been changed. Changes will not be fully visible until program "
          "restart. "
          "Restart now?"},
     kResources, kNothing, kNothing, EventSeverity::Notice, Text{2482, "Restart"}},
    // The program is told in the event's detail.
    {UserCommand::AddTrusted, kProtected, kNothing, kTrust, kOptionsChanged, Text{2110, "Trusted programs"}},
    {UserCommand::ResetTrusted, kProtected, Text{1270, "Forget all trusted programs?"}, kResetTrusted,
     Text{580, "Reset Trusted"}, kNothing, EventSeverity::Notice, Text{2483, "Forget"}},
    {UserCommand::ResetFingerprints, kProtected, kNothing, kResetFingerprints, Text{199, "Fingerprints reset"},
     kNothing},
    {UserCommand::ResetFirewall, kProtected,
     Text{1271, "Reset all settings of the firewall to their first values?"}, kReset, kOptionsChanged,
     Text{610, "Reset"}, EventSeverity::Notice, Text{2484, "Reset"}},
    {UserCommand::SendTestMail, kProtected, kNothing, kTestMail, Text{200, "E-mail notification test"}, kNothing},
    {UserCommand::UpdateSignatures, kProtected, kNothing, kUpdate, kNothing, kNothing},
    {UserCommand::DeleteLogs, kProtected, kNothing, kDeleteLogs, kNothing, kNothing},

    {UserCommand::SetApplicationRules, kProtected, kNothing, kApplicationRules, kNothing, kNothing},
    // Nothing is sent: the interface reads the file.
    {UserCommand::ExportRules, kProtected, kNothing, {}, kNothing, kNothing},
    {UserCommand::ImportApplicationRules, kProtected, kNothing, kReloadApplications, kNothing, kNothing},
    {UserCommand::ImportAdvancedRules, kProtected, kNothing, kReloadAdvanced, kNothing, kNothing},
    {UserCommand::AddAdvancedRule, kProtected, kNothing, kAddAdvanced, kNothing, kNothing},
    {UserCommand::ChangeAdvancedRules, kProtected, kNothing, kChangeAdvanced, kNothing, kNothing},
    {UserCommand::DeleteAdvancedRules, kProtected, kNothing, kDeleteAdvanced, kNothing, kNothing},
    {UserCommand::MoveAdvancedRules, kProtected, kNothing, kMoveAdvanced, kNothing, kNothing},
    {UserCommand::TerminateProcess, kProtected, kNothing, kTerminate, Text{554, "Process termination"}, kNothing,
     EventSeverity::Warning},
    {UserCommand::BlockAddress, kProtected, kNothing, kBlock, Text{553, "Blocked connection"}, kNothing,
     EventSeverity::Warning},
    // Part of an answer that the user gives to a question.
    {UserCommand::TrustProgram, kFree, kNothing, kTrust, kNothing, kNothing},
};
static_assert(std::size(kCommands) == static_cast<std::size_t>(kLastUserCommand) + 1);
static_assert([] {
    for (std::size_t i = 0; i < std::size(kCommands); ++i) {
        if (static_cast<std::size_t>(kCommands[i].command) != i) return false;
    }
    return true;
}());

}  // namespace

const CommandInfo& InfoOf(UserCommand command) {
    return kCommands[static_cast<std::size_t>(command)];
}

UserCommand CommandOf(OptionGroup group) {
    switch (group) {
        case OptionGroup::General: return UserCommand::ApplyGeneral;
        case OptionGroup::Enhancements: return UserCommand::ApplyEnhancements;
        case OptionGroup::Logging: return UserCommand::ApplyLogging;
        case OptionGroup::Miscellaneous: return UserCommand::ApplyMiscellaneous;
        case OptionGroup::Icmp: return UserCommand::ApplyIcmp;
        default: return UserCommand::ApplyFileSharing;
    }
}

}  // namespace brennvar
