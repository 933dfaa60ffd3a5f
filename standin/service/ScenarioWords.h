// The words of a scenario's line, and what single ones stand for. Reading never stops in the middle: what cannot be
// read is zero, and the line is rejected at its end.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Ipv4.h"
#include "rules/ApplicationRuleRecord.h"
#include "service/Scenario.h"

namespace brennvar::standin {

struct Endpoint {
    Ipv4 address;
    std::uint16_t port;  // network order
};

[[nodiscard]] std::string_view TrimBlanks(std::string_view text);

// A line's words from left to right. What cannot be read sets a flag that is asked once, at the end.
class Words {
public:
    // names: of the processes that the lines before start.
    Words(std::string_view line, std::vector<std::string>& names) : m_rest(TrimBlanks(line)), m_names(names) {}

    [[nodiscard]] bool AllGood() const { return m_good && m_rest.empty(); }

    std::string_view Word();
    // The next word when it begins so: what stands behind that.
    std::optional<std::string_view> WordAfter(std::string_view begin);
    // What is left of the line, blanks inside it included, for a field of that size with its closing zero.
    std::string_view OptionalText(std::size_t fieldSize) {
        if (m_rest.size() >= fieldSize) m_good = false;
        return std::exchange(m_rest, {});
    }
    std::string_view Text(std::size_t fieldSize) {
        if (m_rest.empty()) m_good = false;
        return OptionalText(fieldSize);
    }
    void Reject() { m_good = false; }
    template <class T>
    T Take(std::optional<T> value) {
        if (!value) m_good = false;
        return value.value_or(T{});
    }
    std::uint32_t Number() { return Take(ParseNumber32(Word())); }
    std::uint64_t LongNumber() { return Take(ParseWholeNumber(Word())); }
    // A number, or the name of a process that is started.
    std::uint32_t ProcessId() { return ProcessId(Word()); }
    std::uint32_t ProcessId(std::string_view word);
    std::uint32_t NewProcess();
    std::uint32_t NumberOr(std::uint32_t fallback) { return m_rest.empty() ? fallback : Number(); }

private:
    std::string_view m_rest;
    std::vector<std::string>& m_names;
    bool m_good = true;
};

template <class Value, std::size_t Size>
std::optional<Value> Choose(const std::pair<std::string_view, Value> (&choices)[Size], std::string_view word) {
    for (const auto& [name, value] : choices)
        if (name == word) return value;
    return std::nullopt;
}

// a.b.c.d:port
[[nodiscard]] std::optional<Endpoint> ParseEndpoint(std::string_view text);
// A name or a number of IP's.
[[nodiscard]] std::optional<std::uint32_t> ParseProtocol(std::string_view word);
[[nodiscard]] std::optional<RuleAction> ParseRuleAction(std::string_view word);
// aa-bb-cc-dd-ee-ff
[[nodiscard]] std::optional<std::array<std::uint8_t, 6>> ParseHardwareAddress(std::string_view text);

// The instructions of that name and their words, where the name is one of theirs.
[[nodiscard]] std::optional<Instruction> ReadTrafficInstruction(std::string_view name, Words& words);
[[nodiscard]] std::optional<Instruction> ReadLogInstruction(std::string_view name, Words& words);
[[nodiscard]] std::optional<Instruction> ReadFileInstruction(std::string_view name, Words& words);

}  // namespace brennvar::standin
