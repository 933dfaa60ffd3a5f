// What is asked of "Why?", as it stands in the fields of its dialog: each fact as a text that the user can change.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/TrafficFacts.h"

namespace brennvar {

// In the order of the dialog.
enum class WhyField : std::uint8_t {
    Program,
    Protocol,
    Direction,
    RemoteAddress,  // IPv4, or a hardware address
    RemotePort,
    LocalAddress,
    LocalPort,
    User,
    Day,
    Time,
};
inline constexpr std::size_t kWhyFieldCount = 10;
[[nodiscard]] constexpr bool IsWhyChoice(WhyField field) {
    return field == WhyField::Protocol || field == WhyField::Direction;
}

// Empty: not known, but of day and time: now. Of the two choices a number: that of the protocol, 1 for incoming, 2
// for outgoing.
using WhyTexts = std::array<std::string, kWhyFieldCount>;
[[nodiscard]] inline std::string& TextOf(WhyTexts& texts, WhyField field) {
    return texts[static_cast<std::size_t>(field)];
}
[[nodiscard]] inline const std::string& TextOf(const WhyTexts& texts, WhyField field) {
    return texts[static_cast<std::size_t>(field)];
}

[[nodiscard]] WhyTexts WhyTextsOf(const TrafficFacts& facts);

struct WhyQuestion {
    TrafficFacts facts{};  // when: always there
    LocalMoment moment{};
    std::optional<WhyField> wrong{};  // the first text that means nothing; it counts as empty
};
// Addresses, days and times in every spelling that a rule's fields take (advanced/RuleFields.h).
[[nodiscard]] WhyQuestion ParseWhyTexts(const WhyTexts& texts, const LocalMoment& now);

}  // namespace brennvar
