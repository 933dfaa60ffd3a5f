// The form of an advanced rule: every field as it is chosen or typed, what is wrong with it, which fields mean
// nothing beside what stands in the others, and the rule that comes of it. No window
// (advanced/AdvancedRuleDialog_win.h).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "config/Text.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

// In the order in which they are offered.
inline constexpr std::array kRuleProtocols = {RuleProtocol::Any,  RuleProtocol::Tcp, RuleProtocol::Udp,
                                              RuleProtocol::Icmp, RuleProtocol::Ip,  RuleProtocol::Arp};

// The fields that are typed into, in the order in which they are read.
enum class RuleField : std::uint8_t {
    LocalHost,
    LocalMask,
    LocalPorts,
    RemoteHost,
    RemoteMask,
    RemotePorts,
    Program,
    User,
    FirstTime,
    LastTime,
    FirstDay,
    LastDay,
    Description,
};
inline constexpr std::size_t kRuleFieldCount = 13;

template <class Value>
class OfRuleFields {
public:
    [[nodiscard]] Value& operator[](RuleField field) { return m_values[static_cast<std::size_t>(field)]; }
    [[nodiscard]] const Value& operator[](RuleField field) const {
        return m_values[static_cast<std::size_t>(field)];
    }

private:
    std::array<Value, kRuleFieldCount> m_values{};
};

struct RuleForm {
    AdvancedAction action = AdvancedAction::Deny;
    RuleProtocol protocol = RuleProtocol::Any;
    RuleRoute route = RuleRoute::Both;
    bool hasHours = false;  // else the fields of times mean nothing
    bool hasDates = false;
    bool isLogged = false;
    bool isEnabled = true;
    OfRuleFields<std::string> texts{};  // as typed, of any length
};

struct RuleCheck {
    // As far as it can be read: a field with a fault is its default, and so is one that means nothing, but for
    // ports, which a rule keeps while its protocol does not ask for them. Without an identifier.
    AdvancedRule rule{};
    OfRuleFields<Text> faults{};   // number 0: nothing is wrong
    OfRuleFields<Text> ignored{};  // why a field means nothing now; number 0: it counts
    OfRuleFields<Text> hints{};    // what is not seen of a field that counts; number 0: nothing
    // The field to be put right first; nothing: the rule is whole.
    [[nodiscard]] std::optional<RuleField> FirstFault() const;
    // Nothing but the description is at fault: the rule is what it says.
    [[nodiscard]] bool IsReadable() const;
};

[[nodiscard]] RuleForm RuleFormOf(const AdvancedRule& rule);
[[nodiscard]] RuleCheck CheckRuleForm(const RuleForm& form);

// Whether what stands in the field is a name that has to be looked up before it is an address.
[[nodiscard]] bool CanBeLookedUp(const RuleForm& form, RuleField host);

}  // namespace brennvar
