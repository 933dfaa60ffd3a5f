#include "rules/RuleSentence.h"

#include <algorithm>
#include <initializer_list>

#include "base/DisplayName.h"
#include "rules/RuleMatch.h"

namespace brennvar {
namespace {

// What opens a sentence. Whole clauses and not words: what agrees with what differs from language to language.
constexpr Text kHeads[2][3] = {
    {Text{1900, "Deny %1"}, Text{1901, "Deny incoming %1"}, Text{1902, "Deny outgoing %1"}},
    {Text{1903, "Allow %1"}, Text{1904, "Allow incoming %1"}, Text{1905, "Allow outgoing %1"}}};
// The same for rules of any protocol.
constexpr Text kHeadsOfAny[2][3] = {{Text{1906, "Deny all traffic"}, Text{1907, "Deny all incoming traffic"},
                                     Text{1908, "Deny all outgoing traffic"}},
                                    {Text{1909, "Allow all traffic"}, Text{1910, "Allow all incoming traffic"},
                                     Text{1911, "Allow all outgoing traffic"}}};
// What leads to the remote address, by the route.
constexpr Text kRemoteAddresses[3] = {Text{1912, "to or from %1"}, Text{1913, "from %1"}, Text{1914, "to %1"}};

// Empty: any.
std::string AddressText(const RuleEnd& end) {
    switch (end.kind) {
        case RuleEnd::Kind::Ipv4: {
            const int prefix = PrefixOf(end.mask).value_or(32);
            return FormatIpv4(end.address) + (prefix == 32 ? std::string() : '/' + std::to_string(prefix));
        }
        case RuleEnd::Kind::Hardware: return HardwareText(end.hardware);
        default: return {};
    }
}

constexpr Text kRemotePort{1922, "remote port %1"};
constexpr Text kLocalPort{1924, "local port %1"};

bool PortsCount(const RuleEnd& end, RuleProtocol protocol) {
    return end.HasPortRange() && AsksForPorts(protocol);
}

// The ports of a rule for protocols without ports as well, which match whatever the port. Empty: it has none.
std::string PortsOfSome(const Language& language, const AdvancedRule& rule) {
    std::string text;
    if (HasPorts(rule.protocol)) return text;
    if (PortsCount(rule.remote, rule.protocol)) {
        text = FillText(language.GetText(kRemotePort), {PortsText(rule.remote)});
    }
    if (PortsCount(rule.local, rule.protocol)) {
        if (!text.empty()) text += ", ";
        text += FillText(language.GetText(kLocalPort), {PortsText(rule.local)});
    }
    return text;
}

// Parts with commas between them.
class Sentence {
public:
    Sentence(const Language& language, std::string head) : m_language(language), m_text(std::move(head)) {}

    void Add(const Text& part, std::initializer_list<std::string_view> values, std::string_view gap = ", ") {
        m_text += gap;
        m_text += FillText(m_language.GetText(part), values);
    }
    [[nodiscard]] std::string& Result() { return m_text; }

private:
    const Language& m_language;
    std::string m_text;
};

}  // namespace

std::string ActionText(const Language& language, AdvancedAction action) {
    return language.GetText(action == AdvancedAction::Allow ? Text{2, "Allow"} : Text{1, "Deny"});
}

std::string ProtocolText(const Language& language, RuleProtocol protocol) {
    switch (protocol) {
        case RuleProtocol::Ip: return "IP";
        case RuleProtocol::Icmp: return "ICMP";
        case RuleProtocol::Tcp: return "TCP";
        case RuleProtocol::Udp: return "UDP";
        case RuleProtocol::Arp: return "ARP";
        default: return language.GetText(1915, "Any protocol");
    }
}

std::string WhatText(const Language& language, const AdvancedRule& rule) {
    std::string protocol = ProtocolText(language, rule.protocol);
    switch (rule.route) {
        case RuleRoute::Incoming: return FillText(language.GetText(1916, "%1 in"), {protocol});
        case RuleRoute::Outgoing: return FillText(language.GetText(1917, "%1 out"), {protocol});
        default: return protocol;
    }
}

std::string EndText(const Language& language, const RuleEnd& end, RuleProtocol protocol) {
    std::string text = AddressText(end);
    if (!PortsCount(end, protocol)) return text.empty() ? language.GetText(1918, "any") : text;
    if (!text.empty()) text += ", ";
    return text + FillText(language.GetText(1919, "port %1"), {PortsText(end)});
}

std::string ProgramText(const Language& language, const AdvancedRule& rule) {
    return rule.program.empty() ? language.GetText(1918, "any") : OneLine(FileNameOf(rule.program));
}

std::string WhenText(const Language& language, const AdvancedRule& rule) {
    std::string text;
    if (rule.hours) text = TimeText(rule.hours->first) + '-' + TimeText(rule.hours->last);
    if (rule.dates) {
        if (!text.empty()) text += ", ";
        const std::string first = DateText(rule.dates->first);
        text += rule.dates->first == rule.dates->last
                    ? first
                    : FillText(language.GetText(1920, "%1 to %2"), {first, DateText(rule.dates->last)});
    }
    return text.empty() ? language.GetText(1921, "always") : text;
}

std::string HardwareText(const HardwareAddress& address) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : address) {
        if (!text.empty()) text += ':';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 0xF];
    }
    return text;
}

std::string PortsText(const RuleEnd& end) {
    if (!end.HasPortRange()) return {};
    std::string text = std::to_string(end.firstPort);
    if (end.lastPort != end.firstPort) text += '-' + std::to_string(end.lastPort);
    return text;
}

std::string TimeText(int minute) {
    const std::string minutes = std::to_string(minute % 60);
    return std::to_string(minute / 60) + (minutes.size() < 2 ? ":0" : ":") + minutes;
}

std::string DateText(const LocalDate& day) {
    const auto padded = [](int number, std::size_t digits) {
        const std::string text = std::to_string(number);
        return std::string(digits - std::min(digits, text.size()), '0') + text;
    };
    return padded(day.year, 4) + '-' + padded(day.month, 2) + '-' + padded(day.day, 2);
}

std::string RuleSentence(const Language& language, const AdvancedRule& rule) {
    const auto action = rule.action == AdvancedAction::Allow ? 1 : 0;
    const auto route = static_cast<std::size_t>(rule.route);
    const bool isAny = rule.protocol == RuleProtocol::Any;
    const Text& head = (isAny ? kHeadsOfAny : kHeads)[action][route];
    Sentence sentence(language, FillText(language.GetText(head), {ProtocolText(language, rule.protocol)}));

    const std::string remote = AddressText(rule.remote);
    if (!remote.empty()) sentence.Add(kRemoteAddresses[route], {remote}, " ");
    if (HasPorts(rule.protocol) && rule.remote.HasPortRange()) {
        sentence.Add(remote.empty() ? kRemotePort : Text{1919, "port %1"}, {PortsText(rule.remote)});
    }
    if (const std::string local = AddressText(rule.local); !local.empty()) {
        sentence.Add(Text{1923, "local address %1"}, {local});
    }
    if (HasPorts(rule.protocol) && rule.local.HasPortRange()) {
        sentence.Add(kLocalPort, {PortsText(rule.local)});
    }
    if (const std::string ports = PortsOfSome(language, rule); !ports.empty()) {
        sentence.Add(Text{2139, "of TCP and UDP only %1"}, {ports});
    }
    if (!rule.program.empty()) sentence.Add(Text{1925, "for %1"}, {ProgramText(language, rule)});
    if (!rule.user.empty()) sentence.Add(Text{1926, "user %1"}, {OneLine(rule.user)});
    if (rule.hours) {
        sentence.Add(Text{1927, "from %1 to %2"}, {TimeText(rule.hours->first), TimeText(rule.hours->last)});
    }
    if (rule.dates && rule.dates->first == rule.dates->last) {
        sentence.Add(Text{1928, "on %1"}, {DateText(rule.dates->first)});
    } else if (rule.dates) {
        sentence.Add(Text{1929, "from %1 until %2"}, {DateText(rule.dates->first), DateText(rule.dates->last)});
    }
    if (rule.isLogged) sentence.Add(Text{1930, "logged"}, {});
    if (rule.isDamaged) {
        return FillText(language.GetText(1931, "Damaged, never matches: %1"), {sentence.Result()});
    }
    if (!rule.isEnabled) return FillText(language.GetText(1932, "Switched off: %1"), {sentence.Result()});
    return std::move(sentence.Result());
}

}  // namespace brennvar
