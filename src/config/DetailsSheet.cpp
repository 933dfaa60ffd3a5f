#include "config/DetailsSheet.h"

namespace brennvar {

std::string TextOf(const DetailsSheet& sheet) {
    std::string text;
    const auto addLine = [&text](const std::string& line) { text += line + "\r\n"; };
    for (const DetailsGroup& group : sheet.groups) {
        if (!text.empty()) addLine({});
        if (!group.heading.empty()) addLine(group.heading);
        for (const DetailsLine& line : group.lines) {
            addLine(line.label.empty() ? line.value : line.label + " " + line.value);
        }
    }
    if (sheet.bytes.empty()) return text;
    if (!text.empty()) addLine({});
    if (!sheet.bytesHeading.empty()) addLine(sheet.bytesHeading);
    for (const std::string& line : sheet.bytes) addLine(line);
    return text;
}

}  // namespace brennvar
