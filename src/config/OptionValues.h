// What config.conf holds at one moment: the value or the text of every option that the interface knows. A plain
// value, so that two moments can be compared and carried from one thread to another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/WipedText.h"
#include "config/OptionRecord.h"
#include "config/OptionTable.h"

namespace brennvar {

// Of an option, without the zero that ends it in a record.
inline constexpr std::size_t kOptionTextLimit = sizeof(OptionRecord::text) - 1;

class OptionValues {
public:
    // The defaults of the table; texts are empty.
    OptionValues();

    // Of an option in the table; a flag is 0 or 1.
    [[nodiscard]] std::uint32_t Number(OptionId id) const { return At(id).number; }
    [[nodiscard]] const std::string& TextOf(OptionId id) const { return At(id).text.Text(); }
    // A flag other than 0 is on. Numbers are kept as they are, out of their list's range as well: what nobody
    // touches is sent back unchanged.
    void SetNumber(OptionId id, std::uint32_t number);
    // Cut to kOptionTextLimit.
    void SetText(OptionId id, std::string_view text);
    // The same for this option in both.
    [[nodiscard]] bool SameAs(const OptionValues& other, OptionId id) const { return At(id) == other.At(id); }

    // For all options of the group.
    [[nodiscard]] bool SameAs(const OptionValues& other, OptionGroup group) const;

    friend bool operator==(const OptionValues&, const OptionValues&) = default;

private:
    struct Value {
        std::uint32_t number = 0;
        WipedText text;  // it may be a password
        friend bool operator==(const Value&, const Value&) = default;
    };
    [[nodiscard]] const Value& At(OptionId id) const;

    std::vector<Value> m_values;  // as in OptionTable
};

}  // namespace brennvar
