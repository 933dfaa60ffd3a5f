// Rules and facts in a line of words, for tables: "deny tcp out r=192.0.2.0/24 rp=80-88 p=a.exe h=480-1020".
#pragma once

#include <cstdlib>
#include <sstream>
#include <string>

#include "base/TrafficFacts.h"
#include "rules/AdvancedRule.h"

namespace brennvar::test {

struct Range {
    int first;
    int last;
};
// "80-88", "80"
inline Range RangeIn(const std::string& text) {
    const auto dash = text.find('-');
    return {std::atoi(text.c_str()), std::atoi(text.c_str() + (dash == text.npos ? 0 : dash + 1))};
}
// "20261224"
inline LocalDate DayIn(int number) {
    return {.year = number / 10000, .month = number / 100 % 100, .day = number % 100};
}
inline std::optional<std::uint32_t> ProtocolIn(const std::string& word) {
    const std::pair<const char*, std::uint32_t> names[] = {{"ip", 0},   {"icmp", 1},  {"tcp", 6},
                                                           {"udp", 17}, {"arp", 806}, {"any", 0xFFFFFFFF}};
    for (const auto& [name, number] : names) {
        if (word == name) return number;
    }
    if (word.find_first_not_of("0123456789") == word.npos) return static_cast<std::uint32_t>(std::stoul(word));
    return std::nullopt;
}

// Ends: r and l (address/prefix), rh and lh (last byte of a hardware address), rp and lp (ports). p program, u
// user, h minutes, d days.
inline AdvancedRule RuleIn(const std::string& words) {
    AdvancedRule rule;
    std::istringstream stream(words);
    for (std::string word; stream >> word;) {
        const std::string key = word.substr(0, word.find('='));
        const std::string value = word.size() > key.size() ? word.substr(key.size() + 1) : "";
        RuleEnd& end = key.front() == 'r' ? rule.remote : rule.local;
        const Range range = RangeIn(value);
        if (const auto protocol = ProtocolIn(word)) rule.protocol = static_cast<RuleProtocol>(*protocol);
        if (key == "allow") rule.action = AdvancedAction::Allow;
        if (key == "in") rule.route = RuleRoute::Incoming;
        if (key == "out") rule.route = RuleRoute::Outgoing;
        if (key == "off") rule.isEnabled = false;
        if (key == "damaged") rule.isDamaged = true;
        if (key == "r" || key == "l") {
            const auto slash = value.find('/');
            end.kind = RuleEnd::Kind::Ipv4;
            end.address = ParseIpv4(value.substr(0, slash)).value();
            if (slash != value.npos) end.mask = MaskOf(std::stoi(value.substr(slash + 1)));
        }
        if (key == "rh" || key == "lh") {
            end.kind = RuleEnd::Kind::Hardware;
            end.hardware[5] = static_cast<std::uint8_t>(range.first);
        }
        if (key == "rp" || key == "lp") {
            end.firstPort = static_cast<std::uint16_t>(range.first);
            end.lastPort = static_cast<std::uint16_t>(range.last);
        }
        if (key == "p") rule.program = value;
        if (key == "u") rule.user = value;
        if (key == "h") {
            rule.hours = RuleHours{.first = static_cast<std::uint16_t>(range.first),
                                   .last = static_cast<std::uint16_t>(range.last)};
        }
        if (key == "d") rule.dates = RuleDates{.first = DayIn(range.first), .last = DayIn(range.last)};
    }
    return rule;
}

// As above, but each of a kind; t the minute. Without d and t: noon of the 10th of December 2026.
inline TrafficFacts FactsIn(const std::string& words) {
    TrafficFacts facts;
    LocalMoment when{.day = {2026, 12, 10}, .minute = 720};
    std::istringstream stream(words);
    for (std::string word; stream >> word;) {
        const std::string key = word.substr(0, word.find('='));
        const std::string value = word.size() > key.size() ? word.substr(key.size() + 1) : "";
        const int number = std::atoi(value.c_str());
        if (const auto protocol = ProtocolIn(word)) facts.protocol = protocol;
        if (key == "in") facts.direction = TrafficDirection::Incoming;
        if (key == "out") facts.direction = TrafficDirection::Outgoing;
        if (key == "r") facts.remoteAddress = ParseIpv4(value).value();
        if (key == "l") facts.localAddress = ParseIpv4(value).value();
        if (key == "rh") facts.remoteHardware = HardwareAddress{0, 0, 0, 0, 0, static_cast<std::uint8_t>(number)};
        if (key == "lh") facts.localHardware = HardwareAddress{0, 0, 0, 0, 0, static_cast<std::uint8_t>(number)};
        if (key == "rp") facts.remotePort = static_cast<std::uint16_t>(number);
        if (key == "lp") facts.localPort = static_cast<std::uint16_t>(number);
        if (key == "p") facts.program = value;
        if (key == "u") facts.user = value;
        if (key == "t") when.minute = number;
        if (key == "d") when.day = DayIn(number);
    }
    facts.when = when;
    return facts;
}

}  // namespace brennvar::test
