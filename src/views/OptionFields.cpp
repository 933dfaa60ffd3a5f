#include "views/OptionFields.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace brennvar {
namespace {

// The digits that a field begins with; 0 without any.
std::uint32_t LeadingNumber(std::string_view field) {
    constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t number = 0;
    for (const char digit : field.substr(std::min(field.find_first_not_of(' '), field.size()))) {
        if (digit < '0' || digit > '9') break;
        number = std::min(number * 10 + static_cast<std::uint64_t>(digit - '0'), kLargest);
    }
    return static_cast<std::uint32_t>(number);
}

// Of option 70, in the order of its numbers. Names of protocols are not translated.
constexpr const char* kProxyTypes[] = {"HTTP", "SOCKS5"};

}  // namespace

const OptionInfo* OptionOfControl(int control) {
    if (control < kOptionControlFirst || control > kOptionControlLast) return nullptr;
    return FindOption(static_cast<std::uint32_t>(control - kOptionControlFirst));
}

std::span<const char* const> EntriesOf(int control) {
    if (control == ControlOf(OptionId::ProxyType)) return kProxyTypes;
    return {};
}

std::string FieldOf(OptionId id, const OptionValues& values) {
    if (FindOption(static_cast<std::uint32_t>(id))->IsText()) return values.TextOf(id);
    const std::uint32_t number = values.Number(id);
    return id == OptionId::ProxyPort && number == 0 ? std::string() : std::to_string(number);
}

void TakeField(OptionId id, std::string_view field, OptionValues& values) {
    const OptionInfo* const info = FindOption(static_cast<std::uint32_t>(id));
    if (info->IsText()) {
        values.SetText(id, field);
    } else {
        values.SetNumber(id, field.empty() ? info->fallback : LeadingNumber(field));
    }
}

}  // namespace brennvar
