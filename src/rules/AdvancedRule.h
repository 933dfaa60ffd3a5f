// A rule about addresses, ports and times, as the program works with it: a record of "Rules\rules_advanced.conf"
// (ipc/AdvancedRuleRecord.h) that was read and checked. Rules are asked from top to bottom, and the first enabled
// one that matches decides (rules/RuleMatch.h).
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "base/Ipv4.h"
#include "base/TrafficFacts.h"
#include "ipc/AdvancedRuleRecord.h"

namespace brennvar {

// Longest texts of a rule, in bytes without the zero.
inline constexpr std::size_t kLongestRuleProgram = sizeof(AdvancedRuleRecord::program) - 1;
inline constexpr std::size_t kLongestRuleUser = sizeof(AdvancedRuleRecord::user) - 1;
inline constexpr std::size_t kLongestRuleDescription = sizeof(AdvancedRuleRecord::description) - 1;

enum class AdvancedAction : std::uint32_t { Deny = 0, Allow = 1 };

// Numbers of IP's protocols, but for those that stand for several or for none of them.
enum class RuleProtocol : std::uint32_t {
    Ip = 0,  // every protocol over IP
    Icmp = 1,
    Tcp = 6,
    Udp = 17,
    Arp = 806,         // by its Ethernet type, 0x0806, written as a decimal number
    Any = 0xFFFFFFFF,  // ARP as well
};
// Only these have ports.
[[nodiscard]] constexpr bool HasPorts(RuleProtocol protocol) {
    return protocol == RuleProtocol::Tcp || protocol == RuleProtocol::Udp;
}

enum class RuleRoute : std::uint32_t { Both = 0, Incoming = 1, Outgoing = 2 };

struct RuleEnd {
    enum class Kind : std::uint32_t { Any = 0, Ipv4 = 1, Hardware = 2 };
    Kind kind = Kind::Any;
    Ipv4 address = 0;
    Ipv4 mask = 0xFFFFFFFF;  // a prefix: ones, then zeros
    // Host order, both included; 0 and 0: any. They count for TCP and UDP only.
    std::uint16_t firstPort = 0;
    std::uint16_t lastPort = 0;
    HardwareAddress hardware{};

    [[nodiscard]] bool HasPortRange() const { return firstPort != 0 || lastPort != 0; }
    friend bool operator==(const RuleEnd&, const RuleEnd&) = default;
};

// Minutes of the day, both included; the last one below the first one: over midnight.
struct RuleHours {
    std::uint16_t first = 0;
    std::uint16_t last = 0;
    friend bool operator==(const RuleHours&, const RuleHours&) = default;
};

// Days, both included.
struct RuleDates {
    LocalDate first{};
    LocalDate last{};
    friend bool operator==(const RuleDates&, const RuleDates&) = default;
};

// Hours and dates of a record as they stand there while they are not in force, so that a rule that is written back
// keeps them. Nothing is to be made of them: rules that differ in them only are equal.
struct IdleLimits {
    std::uint16_t firstMinute = 0;
    std::uint16_t lastMinute = 0;
    std::uint32_t firstDay = 0;
    std::uint32_t lastDay = 0;
    friend bool operator==(const IdleLimits&, const IdleLimits&) { return true; }
};

struct AdvancedRule {
    std::uint32_t id = 0;  // 0: the service has not given one yet
    AdvancedAction action = AdvancedAction::Deny;
    bool isEnabled = true;
    RuleProtocol protocol = RuleProtocol::Any;
    RuleRoute route = RuleRoute::Both;
    RuleEnd local{};
    RuleEnd remote{};
    std::optional<RuleHours> hours{};
    std::optional<RuleDates> dates{};
    IdleLimits idle{};
    bool isLogged = false;
    std::string program{};  // full path; empty: every program
    std::string user{};     // DOMAIN\name; empty: every user
    std::string description{};
    // A field of the record was out of its range, and is the default here. Such a rule never matches; it can be
    // edited and deleted.
    bool isDamaged = false;
    friend bool operator==(const AdvancedRule&, const AdvancedRule&) = default;
};

// Damaged is: an action, an enabling, a protocol, a route, a kind of end or a logging that is none, a mask that is
// no prefix, a last port below the first, one end by hardware and the other by IPv4 address, unknown restrictions,
// a minute above 1439, a day that the calendar does not have, a last day before the first one. Restrictions that
// are not in force are not looked at. Texts end at their first zero, or with their field.
[[nodiscard]] AdvancedRule DecodeRule(const AdvancedRuleRecord& record);
// Texts that are too long are cut. isDamaged is not written: what is encoded is whole.
[[nodiscard]] AdvancedRuleRecord EncodeRule(const AdvancedRule& rule);

// A new rule for what was seen: the remote end, the protocol, the direction and the program, as far as they are
// known. Of an outgoing connection the remote port counts, of an incoming one the local. It allows nothing: the
// user decides.
[[nodiscard]] AdvancedRule RuleFor(const TrafficFacts& facts);

// Whether the mask is ones, then zeros, in the order of the network; its ones are the prefix: 0 to 32.
[[nodiscard]] std::optional<int> PrefixOf(Ipv4 mask);
[[nodiscard]] Ipv4 MaskOf(int prefix);

}  // namespace brennvar
