// Options as they stand in fields: a flag is "0" or "1", a number decimal, a list's entry its index.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "config/OptionTable.h"
#include "config/OptionValues.h"

namespace brennvar {

// The number of the control that shows an option: this and the option's identifier.
inline constexpr int kOptionControlFirst = 1000;
inline constexpr int kOptionControlLast = 1099;

[[nodiscard]] constexpr int ControlOf(OptionId id) {
    return kOptionControlFirst + static_cast<int>(id);
}
// Null for a control that shows no option.
[[nodiscard]] const OptionInfo* OptionOfControl(int control);

// What the list of an option offers: the first entry stands for 0, the next one for 1.
[[nodiscard]] std::span<const char* const> EntriesOf(int control);

// A proxy port of 0 is none: an empty field.
[[nodiscard]] std::string FieldOf(OptionId id, const OptionValues& values);
// The option as the field says it. A number that is not there is the option's default, one that is too large the
// largest.
void TakeField(OptionId id, std::string_view field, OptionValues& values);

}  // namespace brennvar
