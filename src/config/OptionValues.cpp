#include "config/OptionValues.h"

#include <algorithm>
#include <stdexcept>

namespace brennvar {
namespace {

const OptionInfo& InfoOf(OptionId id) {
    const OptionInfo* const info = FindOption(static_cast<std::uint32_t>(id));
    if (!info) throw std::out_of_range("no such option");  // a mistake of the caller, never of the file
    return *info;
}

std::size_t IndexOf(OptionId id) {
    return static_cast<std::size_t>(&InfoOf(id) - OptionTable().data());
}

}  // namespace

OptionValues::OptionValues() {
    for (const OptionInfo& info : OptionTable()) m_values.push_back({.number = info.fallback, .text = {}});
}

const OptionValues::Value& OptionValues::At(OptionId id) const {
    return m_values[IndexOf(id)];
}

void OptionValues::SetNumber(OptionId id, std::uint32_t number) {
    const bool isOn = InfoOf(id).kind == OptionKind::Flag && number != 0;
    m_values[IndexOf(id)].number = isOn ? 1 : number;
}

void OptionValues::SetText(OptionId id, std::string_view text) {
    m_values[IndexOf(id)].text = text.substr(0, kOptionTextLimit);
}

bool OptionValues::SameAs(const OptionValues& other, OptionGroup group) const {
    const std::span<const OptionInfo> table = OptionTable();
    return std::all_of(table.begin(), table.end(),
                       [&](const OptionInfo& option) { return option.group != group || SameAs(other, option.id); });
}

}  // namespace brennvar
