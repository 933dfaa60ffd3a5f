// The record of the command pipe: everything that the interface asks of the service is one of these. A record is
// all zeros but for its code and the fields of its command. There is no answer.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"
#include "ipc/AdvancedRuleRecord.h"

namespace brennvar {

inline constexpr char kCommandPipeName[] = R"(\\.\pipe\BRENNVAR_IPC_COMMAND)";

enum class CommandCode : std::uint32_t {
    EventReport = 1,
    BlockAddress = 2,
    TerminateProcess = 3,
    AddAdvancedRule = 4,
    ModifyAdvancedRule = 5,
    DeleteAdvancedRule = 6,
    ReloadAdvancedRules = 7,
    SetOption = 8,
    SetOptionText = 9,
    SetValue10 = 10,
    ShutdownSecond = 11,
    ReloadApplicationRules = 12,
    ShutdownFirst = 13,
    Option7On = 14,
    Option7Off = 15,
    ReloadOptions = 16,
    ResetFingerprints = 17,
    SetSkin = 18,
    SetLanguage = 19,
    SendTestMail = 20,
    ReloadSignatures = 21,
    SetApplicationRule = 22,
    DeleteLogs = 23,
    SetRunState = 24,
    SetValue25 = 25,
    AllowProcessText = 26,
    ResetTrusted = 27,
    SetRegistryValue = 28,
    Reset = 29,
    MoveAdvancedRuleUp = 30,
    MoveAdvancedRuleDown = 31,
};

// The coding of SetApplicationRule, which is not that of the rules file (1 deny, 2 allow).
enum class RuleCommandAction : std::uint32_t { Deny = 0, Allow = 1, Ask = 2, Remove = 3 };

#pragma pack(push, 1)
struct CommandRecord {
    CommandCode code;                 //    0
    char eventTitle[128];             //    4
    char subject[512];                //  132  path, address, page name or date
    std::uint32_t value;              //  644
    char detail[4096];                //  648
    std::uint32_t address;            // 4744  IPv4, network byte order
    std::uint32_t processId;          // 4748
    AdvancedRuleRecord advancedRule;  // 4752
    std::uint32_t ruleId;             // 5464  identifier of an advanced rule
    std::uint32_t optionValue;        // 5468
    char optionText[120];             // 5472
    std::uint32_t optionId;           // 5592
};
#pragma pack(pop)
static_assert(RecordType<CommandRecord> && sizeof(CommandRecord) == 5596);
static_assert(offsetof(CommandRecord, code) == 0 && offsetof(CommandRecord, eventTitle) == 4);
static_assert(offsetof(CommandRecord, subject) == 132 && offsetof(CommandRecord, value) == 644);
static_assert(offsetof(CommandRecord, detail) == 648 && offsetof(CommandRecord, address) == 4744);
static_assert(offsetof(CommandRecord, processId) == 4748 && offsetof(CommandRecord, advancedRule) == 4752);
static_assert(offsetof(CommandRecord, ruleId) == 5464 && offsetof(CommandRecord, optionValue) == 5468);
static_assert(offsetof(CommandRecord, optionText) == 5472 && offsetof(CommandRecord, optionId) == 5592);

}  // namespace brennvar
