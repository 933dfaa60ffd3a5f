// What a dialog tells of one thing, in groups of labelled lines, with its bytes where it has some. Nothing of it is
// a window: it is made, tested and copied as text (dialogs/DetailsDialog_win.h shows it).
#pragma once

#include <string>
#include <vector>

#include "base/Ipv4.h"
#include "config/SkinTones.h"

namespace brennvar {

struct DetailsLine {
    std::string label;  // empty: the line goes on what stands above it
    std::string value;
    Tone tone = Tone::Plain;
};

struct DetailsGroup {
    std::string heading;  // empty: none
    std::vector<DetailsLine> lines;
};

struct DetailsSheet {
    std::string title;  // of the window
    // The other side, where there is one: the network tools can be asked about it. 0: there is none.
    Ipv4 address = 0;
    std::vector<DetailsGroup> groups;
    // Lines of a dump, in letters of one width, below a heading; empty: no bytes.
    std::string bytesHeading;
    std::vector<std::string> bytes;
};

// All of it as lines of text, "label value", groups and bytes with an empty line between them.
[[nodiscard]] std::string TextOf(const DetailsSheet& sheet);

}  // namespace brennvar
