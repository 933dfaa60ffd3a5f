// What is typed into the fields of an advanced rule and of "Why?", read one field at a time. Blanks around a text
// count for nothing. Every result is either a value or what is wrong, in words.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "config/Text.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

// The value, or its fault.
template <class Value>
class FieldValue {
public:
    FieldValue(Value value) : m_value(std::move(value)) {}  // NOLINT(google-explicit-constructor)
    FieldValue(Text fault) : m_fault(fault) {}              // NOLINT(google-explicit-constructor)
    [[nodiscard]] bool IsWhole() const { return m_fault.number == 0; }
    [[nodiscard]] const Value& operator*() const { return m_value; }
    [[nodiscard]] const Value* operator->() const { return &m_value; }
    [[nodiscard]] const Text& Fault() const { return m_fault; }

private:
    Value m_value{};
    Text m_fault;
};

struct TypedHost {
    RuleEnd::Kind kind = RuleEnd::Kind::Any;
    Ipv4 address = 0;
    std::optional<Ipv4> mask{};  // where one stands with the address
    HardwareAddress hardware{};
};
// Any host (nothing, "any", "*"), "192.0.2.1", "192.0.2.0/24", "192.0.2.0 255.255.255.0", the same with a slash,
// "192.0.2.0-192.0.2.255" where that is a mask, "02:00:00:ab:cd:ef" or "02-00-00-AB-CD-EF". invalid: what is said
// of anything else.
[[nodiscard]] FieldValue<TypedHost> ReadHost(std::string_view text, const Text& invalid);
// Something that may be looked up: letters, digits, dots, hyphens and low lines, and not only numbers and dots.
[[nodiscard]] bool IsHostName(std::string_view text);

// "255.255.255.0", "/24", "24"; nothing: that of one address.
[[nodiscard]] FieldValue<Ipv4> ReadMask(std::string_view text);

struct PortRange {
    std::uint16_t first = 0;
    std::uint16_t last = 0;
};
// Any port (nothing, "any", "*"), "80", "80-88", or a service of the table of the questions ("http"), which may
// have several ports in a row.
[[nodiscard]] FieldValue<PortRange> ReadPorts(std::string_view text, RuleProtocol protocol);

// "8:00", "08.00", "8": minutes of the day.
[[nodiscard]] FieldValue<std::uint16_t> ReadTime(std::string_view text);
// "2026-12-24", "2026/12/24", "24.12.2026".
[[nodiscard]] FieldValue<LocalDate> ReadDay(std::string_view text);

// Digits only, at most so many of them (at most 10), and not above the most.
[[nodiscard]] std::optional<std::uint32_t> ReadNumber(std::string_view text, std::size_t digits,
                                                      std::uint32_t most);

[[nodiscard]] std::string_view WithoutBlanks(std::string_view text);

}  // namespace brennvar
