#include "rules/AdvancedRule.h"

#include <algorithm>
#include <bit>
#include <iterator>

#include "base/Calendar.h"

namespace brennvar {
namespace {

enum RestrictionBits : std::uint32_t { kByHours = 1, kByDates = 2 };

constexpr int kLastYear = 9999;  // of four digits

// Puts what a record says into a rule, and remembers whether all of it was in its range.
class Decoder {
public:
    explicit Decoder(const AdvancedRuleRecord& record) : m_record(record) {}

    AdvancedRule Decode() {
        m_rule.id = m_record.id;
        m_rule.action = OneOf(m_record.action, {AdvancedAction::Deny, AdvancedAction::Allow}, m_rule.action);
        m_rule.isEnabled = OneOf(m_record.isEnabled, {0U, 1U}, 1U) != 0;
        m_rule.protocol = OneOf(m_record.protocol,
                                {RuleProtocol::Ip, RuleProtocol::Icmp, RuleProtocol::Tcp, RuleProtocol::Udp,
                                 RuleProtocol::Arp, RuleProtocol::Any},
                                m_rule.protocol);
        m_rule.route =
            OneOf(m_record.route, {RuleRoute::Both, RuleRoute::Incoming, RuleRoute::Outgoing}, m_rule.route);
        m_rule.local = EndOf(m_record.local);
        m_rule.remote = EndOf(m_record.remote);
        using Kind = RuleEnd::Kind;
        const auto areEnds = [this](Kind a, Kind b) { return m_rule.local.kind == a && m_rule.remote.kind == b; };
        Check(!areEnds(Kind::Ipv4, Kind::Hardware) && !areEnds(Kind::Hardware, Kind::Ipv4));
        DecodeRestrictions();
        m_rule.isLogged = OneOf(m_record.isLogged, {0U, 1U}, 0U) != 0;
        m_rule.program = TextOf(m_record.program);
        m_rule.user = TextOf(m_record.user);
        m_rule.description = TextOf(m_record.description);
        return std::move(m_rule);
    }

private:
    bool Check(bool isInRange) {
        if (!isInRange) m_rule.isDamaged = true;
        return isInRange;
    }

    template <class Value>
    Value OneOf(std::uint32_t number, std::initializer_list<Value> known, Value otherwise) {
        const auto value = static_cast<Value>(number);
        return Check(std::find(known.begin(), known.end(), value) != known.end()) ? value : otherwise;
    }

    RuleEnd EndOf(const AdvancedRuleEnd& record) {
        RuleEnd end;
        end.kind = OneOf(record.kind, {RuleEnd::Kind::Any, RuleEnd::Kind::Ipv4, RuleEnd::Kind::Hardware}, end.kind);
        if (end.kind == RuleEnd::Kind::Ipv4) {
            end.address = record.address;
            if (Check(PrefixOf(record.mask).has_value())) end.mask = record.mask;
        }
        if (end.kind == RuleEnd::Kind::Hardware) {
            std::copy(std::begin(record.hardware), std::end(record.hardware), end.hardware.begin());
        }
        if (Check(record.lastPort >= record.firstPort)) {
            end.firstPort = record.firstPort;
            end.lastPort = record.lastPort;
        }
        return end;
    }

    void DecodeRestrictions() {
        m_rule.idle = {.firstMinute = m_record.firstMinute,
                       .lastMinute = m_record.lastMinute,
                       .firstDay = m_record.firstDay,
                       .lastDay = m_record.lastDay};
        Check((m_record.restrictions & ~(kByHours | kByDates)) == 0);
        if ((m_record.restrictions & kByHours) != 0 &&
            Check(m_record.firstMinute < kMinutesPerDay && m_record.lastMinute < kMinutesPerDay)) {
            m_rule.hours = RuleHours{.first = m_record.firstMinute, .last = m_record.lastMinute};
        }
        if ((m_record.restrictions & kByDates) == 0) return;
        const auto first = DayOf(m_record.firstDay);
        const auto last = DayOf(m_record.lastDay);
        if (Check(first && last && m_record.firstDay <= m_record.lastDay)) {
            m_rule.dates = RuleDates{.first = *first, .last = *last};
        }
    }

    static std::optional<LocalDate> DayOf(std::uint32_t number) {
        const LocalDate date{.year = static_cast<int>(number / 10000),
                             .month = static_cast<int>(number / 100 % 100),
                             .day = static_cast<int>(number % 100)};
        if (date.year > kLastYear || !IsOfCalendar(date)) return std::nullopt;
        return date;
    }

    const AdvancedRuleRecord& m_record;
    AdvancedRule m_rule;
};

AdvancedRuleEnd RecordOf(const RuleEnd& end) {
    AdvancedRuleEnd record{};
    record.kind = static_cast<std::uint32_t>(end.kind);
    if (end.kind == RuleEnd::Kind::Ipv4) {
        record.address = end.address;
        record.mask = end.mask;
    }
    if (end.kind == RuleEnd::Kind::Hardware) {
        std::copy(end.hardware.begin(), end.hardware.end(), std::begin(record.hardware));
    }
    record.firstPort = end.firstPort;
    record.lastPort = end.lastPort;
    return record;
}

std::uint32_t NumberOf(const LocalDate& date) {
    return static_cast<std::uint32_t>(date.year * 10000 + date.month * 100 + date.day);
}

RuleProtocol ProtocolFor(std::optional<std::uint32_t> seen) {
    if (!seen) return RuleProtocol::Any;
    for (const RuleProtocol protocol :
         {RuleProtocol::Icmp, RuleProtocol::Tcp, RuleProtocol::Udp, RuleProtocol::Arp}) {
        if (*seen == static_cast<std::uint32_t>(protocol)) return protocol;
    }
    return RuleProtocol::Ip;
}

}  // namespace

AdvancedRule DecodeRule(const AdvancedRuleRecord& record) {
    return Decoder(record).Decode();
}

AdvancedRuleRecord EncodeRule(const AdvancedRule& rule) {
    AdvancedRuleRecord record{};
    record.id = rule.id;
    record.action = static_cast<std::uint32_t>(rule.action);
    record.isEnabled = rule.isEnabled ? 1 : 0;
    record.protocol = static_cast<std::uint32_t>(rule.protocol);
    record.route = static_cast<std::uint32_t>(rule.route);
    record.local = RecordOf(rule.local);
    record.remote = RecordOf(rule.remote);
    record.firstMinute = rule.idle.firstMinute;
    record.lastMinute = rule.idle.lastMinute;
    record.firstDay = rule.idle.firstDay;
    record.lastDay = rule.idle.lastDay;
    if (rule.hours) {
        record.restrictions |= kByHours;
        record.firstMinute = rule.hours->first;
        record.lastMinute = rule.hours->last;
    }
    if (rule.dates) {
        record.restrictions |= kByDates;
        record.firstDay = NumberOf(rule.dates->first);
        record.lastDay = NumberOf(rule.dates->last);
    }
    record.isLogged = rule.isLogged ? 1 : 0;
    PutText(record.program, rule.program);
    PutText(record.user, rule.user);
    PutText(record.description, rule.description);
    return record;
}

AdvancedRule RuleFor(const TrafficFacts& facts) {
    AdvancedRule rule;
    rule.protocol = ProtocolFor(facts.protocol);
    rule.program = facts.program;
    if (facts.remoteAddress != 0) {
        rule.remote.kind = RuleEnd::Kind::Ipv4;
        rule.remote.address = facts.remoteAddress;
    } else if (facts.remoteHardware) {
        rule.remote.kind = RuleEnd::Kind::Hardware;
        rule.remote.hardware = *facts.remoteHardware;
    }
    const bool hasPorts = HasPorts(rule.protocol);
    if (facts.direction == TrafficDirection::Outgoing) {
        rule.route = RuleRoute::Outgoing;
        if (hasPorts) rule.remote.firstPort = rule.remote.lastPort = facts.remotePort;
    } else if (facts.direction == TrafficDirection::Incoming) {
        rule.route = RuleRoute::Incoming;
        if (hasPorts) rule.local.firstPort = rule.local.lastPort = facts.localPort;
    }
    return rule;
}

std::optional<int> PrefixOf(Ipv4 mask) {
    const std::uint32_t zeros = ~SwapAddress(mask);
    if ((zeros & (zeros + 1)) != 0) return std::nullopt;
    return std::countl_zero(zeros);
}

Ipv4 MaskOf(int prefix) {
    return prefix == 0 ? 0 : SwapAddress(~std::uint32_t{0} << (32 - prefix));
}

}  // namespace brennvar
