#include "rules/CoveredRules.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "base/AsciiCase.h"
#include "rules/RuleMatch.h"

namespace brennvar {
namespace {

// A prefix of an end, and two numbers beyond the prefixes.
constexpr std::uint8_t kAnyAddress = 0;
constexpr std::uint8_t kHardwareAddress = 33;

constexpr std::uint64_t kMostKnown = std::numeric_limits<std::uint32_t>::max();

// Which fields a rule asks for, without their values. Few shapes are in use, however many rules there are.
struct Shape {
    RuleProtocol protocol{};
    RuleRoute route{};
    std::uint8_t remote = 0;  // bits of the prefix, or as above
    std::uint8_t local = 0;
    bool hasProgram = false;
    bool hasUser = false;
    friend bool operator==(const Shape&, const Shape&) = default;
};

// The fields in which a rule that covers another one asks for the same values, or for none.
struct Values {
    Shape shape;
    std::uint64_t remote = 0;  // the prefix in host order, or the hardware address as a number
    std::uint64_t local = 0;
    std::uint32_t program = 0;  // numbers of texts; 0: none
    std::uint32_t user = 0;
    friend bool operator==(const Values&, const Values&) = default;
};

struct ValuesHash {
    std::size_t operator()(const Values& values) const {
        const Shape& shape = values.shape;
        std::uint64_t hash = static_cast<std::uint32_t>(shape.protocol);
        for (const std::uint64_t part :
             {static_cast<std::uint64_t>(shape.route) << 16 | std::uint64_t{shape.remote} << 8 | shape.local,
              values.remote, values.local, std::uint64_t{values.program} << 32 | values.user}) {
            hash = (hash ^ part) * 0x9E3779B97F4A7C15;  // the golden ratio: spreads over the upper bits
            hash ^= hash >> 32;
        }
        return static_cast<std::size_t>(hash);
    }
};

// The fields that are ranges: a rule that covers another one has wider ones.
struct Ranges {
    std::uint16_t remoteFirst = 0;
    std::uint16_t remoteLast = 0;
    std::uint16_t localFirst = 0;
    std::uint16_t localLast = 0;
    std::uint16_t firstMinute = 0;
    std::uint16_t minutes = kMinutesPerDay;
    std::uint32_t firstDay = 0;
    std::uint32_t lastDay = kMostKnown;

    [[nodiscard]] bool Contain(const Ranges& other) const {
        // Without a branch between them: most rules fail at some field, and no one knows at which.
        const auto later = static_cast<unsigned>(other.firstMinute - firstMinute + kMinutesPerDay) % kMinutesPerDay;
        return (remoteFirst <= other.remoteFirst) & (other.remoteLast <= remoteLast) &
               (localFirst <= other.localFirst) & (other.localLast <= localLast) & (firstDay <= other.firstDay) &
               (other.lastDay <= lastDay) & ((minutes == kMinutesPerDay) | (later + other.minutes <= minutes));
    }
};

struct Pattern {
    Values values;
    Ranges ranges;
};

// The same number for the same text, whatever the case of its letters.
class TextNumbers {
public:
    std::uint32_t Of(const std::string& text) {
        if (text.empty()) return 0;
        const auto next = static_cast<std::uint32_t>(m_numbers.size() + 1);
        return m_numbers.try_emplace(LowerCase(text), next).first->second;
    }

private:
    std::unordered_map<std::string, std::uint32_t> m_numbers;
};

std::uint32_t PrefixBits(int prefix) {
    return SwapAddress(MaskOf(prefix));
}

void PutEnd(const RuleEnd& end, std::uint8_t& shape, std::uint64_t& value) {
    if (end.kind == RuleEnd::Kind::Hardware) {
        shape = kHardwareAddress;
        for (const std::uint8_t byte : end.hardware) value = value << 8 | byte;
    } else if (end.kind == RuleEnd::Kind::Ipv4) {
        shape = static_cast<std::uint8_t>(PrefixOf(end.mask).value_or(32));
        value = SwapAddress(end.address & end.mask);
    }
}

Pattern PatternOf(const AdvancedRule& rule, TextNumbers& texts) {
    Pattern pattern;
    Values& values = pattern.values;
    values.shape = {.protocol = rule.protocol,
                    .route = rule.route,
                    .hasProgram = !rule.program.empty(),
                    .hasUser = !rule.user.empty()};
    PutEnd(rule.remote, values.shape.remote, values.remote);
    PutEnd(rule.local, values.shape.local, values.local);
    values.program = texts.Of(rule.program);
    values.user = texts.Of(rule.user);

    Ranges& ranges = pattern.ranges;
    const auto portsOf = [&rule](const RuleEnd& end) {
        // Of what has no ports, none is outside of any range.
        if (!AsksForPorts(rule.protocol)) return std::pair(kLastPort, std::uint16_t{1});
        return end.HasPortRange() ? std::pair(std::max<std::uint16_t>(end.firstPort, 1), end.lastPort)
                                  : std::pair(std::uint16_t{1}, kLastPort);
    };
    std::tie(ranges.remoteFirst, ranges.remoteLast) = portsOf(rule.remote);
    std::tie(ranges.localFirst, ranges.localLast) = portsOf(rule.local);
    if (rule.hours) {
        const int more = (rule.hours->last - rule.hours->first + kMinutesPerDay) % kMinutesPerDay;
        ranges.firstMinute = rule.hours->first;
        ranges.minutes = static_cast<std::uint16_t>(more + 1);
    }
    if (rule.dates) {
        const auto number = [](const LocalDate& day) {
            return static_cast<std::uint32_t>((day.year * 100 + day.month) * 100 + day.day);
        };
        ranges.firstDay = number(rule.dates->first);
        ranges.lastDay = number(rule.dates->last);
    }
    return pattern;
}

bool Covers(RuleProtocol wide, RuleProtocol narrow) {
    return wide == narrow || wide == RuleProtocol::Any ||
           (wide == RuleProtocol::Ip && narrow != RuleProtocol::Any && narrow != RuleProtocol::Arp);
}

// Whether a rule of the one shape can cover any of the other: it asks for no field that the other does not.
bool Covers(const Shape& wide, const Shape& narrow) {
    const auto covers = [](std::uint8_t wideEnd, std::uint8_t narrowEnd) {
        return wideEnd == kAnyAddress || wideEnd == narrowEnd ||
               (wideEnd < narrowEnd && narrowEnd != kHardwareAddress);
    };
    return covers(wide.remote, narrow.remote) && covers(wide.local, narrow.local) &&
           Covers(wide.protocol, narrow.protocol) &&
           (wide.route == RuleRoute::Both || wide.route == narrow.route) &&
           (!wide.hasProgram || narrow.hasProgram) && (!wide.hasUser || narrow.hasUser);
}

// What a rule of this shape must ask for to cover one that asks for these values.
Values Widened(const Values& values, const Shape& shape) {
    const auto widened = [](std::uint64_t value, std::uint8_t end) {
        return end == kHardwareAddress ? value : value & PrefixBits(end);
    };
    return {.shape = shape,
            .remote = widened(values.remote, shape.remote),
            .local = widened(values.local, shape.local),
            .program = shape.hasProgram ? values.program : 0,
            .user = shape.hasUser ? values.user : 0};
}

// The rules that no other one covers, found by shape and values. What a covered rule covers, the rule above it
// covers as well: so those are left out, and each rule is only compared with the few of the same values.
class CoveringRules {
public:
    [[nodiscard]] int FirstThatCovers(const Pattern& pattern) const {
        int first = kNotCovered;
        for (const Shape& shape : m_shapes) {
            if (!Covers(shape, pattern.values.shape)) continue;
            const auto alike = m_rules.find(Widened(pattern.values, shape));
            if (alike == m_rules.end()) continue;
            for (const Entry& entry : alike->second) {
                if (first != kNotCovered && entry.place > first) break;
                if (entry.ranges.Contain(pattern.ranges)) first = entry.place;
            }
        }
        return first;
    }

    void Add(const Pattern& pattern, int place) {
        if (std::ranges::find(m_shapes, pattern.values.shape) == m_shapes.end()) {
            m_shapes.push_back(pattern.values.shape);
        }
        m_rules[pattern.values].push_back({.ranges = pattern.ranges, .place = place});
    }

private:
    struct Entry {
        Ranges ranges;
        int place = 0;
    };
    std::vector<Shape> m_shapes;
    std::unordered_map<Values, std::vector<Entry>, ValuesHash> m_rules;  // by place, within the same values
};

}  // namespace

std::vector<int> FindCoveredRules(std::span<const AdvancedRule> rules, const StopSignal& stop) {
    std::vector<int> coveredBy(rules.size(), kNotCovered);
    TextNumbers texts;
    CoveringRules covering;
    for (std::size_t i = 0; i < rules.size() && !stop.Requested(); ++i) {
        if (!rules[i].isEnabled || rules[i].isDamaged) continue;
        const Pattern pattern = PatternOf(rules[i], texts);
        coveredBy[i] = covering.FirstThatCovers(pattern);
        if (coveredBy[i] == kNotCovered) covering.Add(pattern, static_cast<int>(i));
    }
    return coveredBy;
}

}  // namespace brennvar
