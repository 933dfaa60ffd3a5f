// The sections of the Options page as data: what stands in each, in which order and column. One form lays them all
// out (OptionForm_win.h).
#pragma once

#include <span>
#include <vector>

#include "config/OptionTable.h"
#include "config/Text.h"

namespace brennvar {

enum class RowKind {
    Heading,
    Line,  // a quiet text that explains
    Flag,
    Number,
    Port,
    NumberOfFlag,  // below the flag that it belongs to; the caption is its unit
    Text,
    Password,
    List,
    Button,  // sends its number to the control center as a command
};

struct RowInfo {
    RowKind kind;
    int control = 0;  // the number of field or button
    Text caption;
    int column = 0;
};

struct SectionInfo {
    // What applying means.
    enum class Kind { Options, BrowserFiltering, Resources, Password };

    Kind kind;
    Text caption;
    OptionGroup group;  // of Options, else None
    int columnWidth;    // the least, pixels at 96 per inch: in a narrower form the columns stand below each other
    std::vector<RowInfo> rows;
};

[[nodiscard]] std::span<const SectionInfo> OptionSections();

// The fields of browser filtering that stand for values of the user.
struct FilterFlag {
    int control;
    const char* userValue;
};
[[nodiscard]] std::span<const FilterFlag> FilterFlags();

}  // namespace brennvar
