// One thing that is said to the service: a command of the table with what it carries. All of it is sent in one go,
// in the order of the table, and nothing else comes in between. A plain value: it is put together on the
// user-interface thread and sent on the link thread.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Ipv4.h"
#include "base/Password.h"
#include "base/WipedText.h"
#include "commands/CommandTable.h"
#include "config/Language.h"
#include "config/OptionValues.h"
#include "config/ResourceChoice.h"
#include "ipc/CommandPipe.h"

namespace brennvar {

// An option as it is to be; number or text, as the table of options says.
struct OptionSetting {
    OptionId id;
    std::uint32_t number = 0;
    WipedText text{};       // it may be a password
    bool isChanged = true;  // other than it was stored
};

struct ApplicationChange {
    std::string path;
    RuleCommandAction action;
    friend bool operator==(const ApplicationChange&, const ApplicationChange&) = default;
};

// One rule on its way past others: so many places towards the end, below zero towards the beginning.
struct RuleMove {
    std::uint32_t id = 0;
    int places = 0;
    friend bool operator==(const RuleMove&, const RuleMove&) = default;
};

// What a command carries; each uses what it needs.
struct CommandArguments {
    std::vector<OptionSetting> options{};
    std::vector<ApplicationChange> applications{};
    std::vector<AdvancedRuleRecord> rules{};  // new ones, or what becomes of those with these identifiers
    std::vector<std::uint32_t> ruleIds{};     // of rules that go
    std::vector<RuleMove> moves{};            // those towards the beginning are sent first
    std::uint32_t value = 0;                  // of the steps that have none of their own
    std::uint32_t processId = 0;
    Ipv4 address = 0;
    std::string path{};     // of a program
    LocalDate day{};        // whose logs go
    bool olderToo = false;  // and those before it
    ResourceChoice resources{};
    Password password{};
    // The event's, in the language of the user. The subject counts where the table has none.
    std::string subject{};
    std::string detail{};
};

class Batch {
public:
    explicit Batch(UserCommand command, CommandArguments arguments = {})
        : m_info(&InfoOf(command)), m_arguments(std::move(arguments)) {}

    [[nodiscard]] const CommandInfo& Info() const { return *m_info; }
    // Command after command, then the event. The language is borrowed for the call.
    void SendTo(CommandPipe& pipe, const Language& language) const;

private:
    void SendStep(const CommandStep& step, CommandPipe& pipe) const;
    void SendOptions(CommandPipe& pipe) const;
    void SendMoves(CommandPipe& pipe, bool isUp) const;
    [[nodiscard]] bool Changes(OptionId id) const;

    const CommandInfo* m_info;  // of the table
    CommandArguments m_arguments;
};

// A whole group as the user wants it. stored: as the service had it when the user applied it.
[[nodiscard]] Batch OptionsBatch(OptionGroup group, const OptionValues& wanted, const OptionValues& stored);
// What the user is told of an address that stays blocked for so long:
// "IP: 10.1.2.3. Blocking IP address for 600 seconds".
[[nodiscard]] std::string BlockedText(const Language& language, Ipv4 address, std::uint32_t seconds);
// seconds: how long the address stays blocked, option 18. Its event says the same.
[[nodiscard]] Batch BlockAddressBatch(const Language& language, Ipv4 address, std::uint32_t seconds);

}  // namespace brennvar
