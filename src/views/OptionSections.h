// The sections of the Options page as data: what stands in each, in which order and column. The options themselves
// come from their table (config/OptionTable.h); here are headings, buttons and what is stored elsewhere. One form
// lays them all out (OptionForm_win.h).
#pragma once

#include <span>
#include <vector>

#include "config/OptionTable.h"
#include "config/Text.h"

namespace brennvar {

enum class RowKind {
    Heading,
    Remark,  // a quiet text that explains
    Field,
    Button,  // sends its number to the control center as a command
    Action,  // a button that the page answers itself
    List,    // of the service; what is left of the form's height is shared by its lists
};

struct RowInfo {
    RowKind kind;
    int control = 0;  // the number of field or button
    Text caption;
    int column = 0;
    OptionKind field = OptionKind::Flag;  // how a field is shown, of an option or not
    bool isBeside = false;                // of a button: on the right of the one before
    bool destroys = false;                // of a button: what it does cannot be undone
    std::vector<int> needs = {};  // numbers of flags: it can be worked with while one of them is on; none: always
};

struct SectionInfo {
    // What applying means.
    enum class Kind { Options, BrowserFiltering, Resources, Nothing };

    Kind kind;
    Text caption;
    OptionGroup group;  // whose options it shows; None of Resources and Nothing
    int columnWidth;    // the least, pixels at 96 per inch: in a narrower form the columns stand below each other
    std::vector<RowInfo> rows;

    // The number of its list, 0: it has none.
    [[nodiscard]] int List() const;
};

[[nodiscard]] std::span<const SectionInfo> OptionSections();

// The fields of browser filtering that stand for values of the user.
struct FilterFlag {
    int control;
    const char* userValue;
    Text caption;
};
[[nodiscard]] std::span<const FilterFlag> FilterFlags();

}  // namespace brennvar
