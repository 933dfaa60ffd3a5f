#include "base/DisplayName.h"

#include <algorithm>

namespace brennvar {

std::string FileNameOf(std::string_view path) {
    const std::size_t backslash = path.rfind('\\');
    if (backslash == std::string_view::npos || backslash + 1 == path.size()) return std::string(path);
    return std::string(path.substr(backslash + 1));
}

std::string CutTo40(std::string text) {
    constexpr std::size_t kLongest = 40;
    constexpr std::string_view kDots = "...";
    if (text.size() > kLongest) {
        text.resize(kLongest - kDots.size());
        text += kDots;
    }
    return text;
}

std::string DisplayNameOf(std::string_view path, std::string_view fileDescription) {
    return fileDescription.empty() ? FileNameOf(path) : CutTo40(std::string(fileDescription));
}

void BlankControls(std::string& text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
}

std::string OneLine(std::string text) {
    BlankControls(text);
    return text;
}

}  // namespace brennvar
