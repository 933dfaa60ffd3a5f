// One record of "Rules\rules.conf": what the service has decided for a program file. A flat sequence of these, no
// header, each enciphered on its own.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"

namespace brennvar {

// The file's coding. The command that changes a rule has another one (RuleCommandAction in ipc/CommandRecord.h).
enum class RuleAction : std::uint32_t { Ask = 0, Deny = 1, Allow = 2 };  // any other value: ask

#pragma pack(push, 1)
struct ApplicationRuleRecord {
    char path[260];     //   0  full path of the program file
    RuleAction action;  // 260
};
#pragma pack(pop)
static_assert(RecordType<ApplicationRuleRecord> && sizeof(ApplicationRuleRecord) == 264);
static_assert(offsetof(ApplicationRuleRecord, path) == 0 && offsetof(ApplicationRuleRecord, action) == 260);

}  // namespace brennvar
