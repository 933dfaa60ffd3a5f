#include "base/DisplayName.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace brennvar {
namespace {

constexpr std::string_view kDots = "...";

// The characters with the property Bidi_Control (Unicode 6.3, UAX 9).
struct DirectionMark {
    char16_t code;
    std::string_view utf8;
    std::string_view name;
};
constexpr DirectionMark kDirectionMarks[] = {
    {0x061C, "\xD8\x9C", "[ALM]"},     {0x200E, "\xE2\x80\x8E", "[LRM]"}, {0x200F, "\xE2\x80\x8F", "[RLM]"},
    {0x202A, "\xE2\x80\xAA", "[LRE]"}, {0x202B, "\xE2\x80\xAB", "[RLE]"}, {0x202C, "\xE2\x80\xAC", "[PDF]"},
    {0x202D, "\xE2\x80\xAD", "[LRO]"}, {0x202E, "\xE2\x80\xAE", "[RLO]"}, {0x2066, "\xE2\x81\xA6", "[LRI]"},
    {0x2067, "\xE2\x81\xA7", "[RLI]"}, {0x2068, "\xE2\x81\xA8", "[FSI]"}, {0x2069, "\xE2\x81\xA9", "[PDI]"}};

}  // namespace

std::string FileNameOf(std::string_view path) {
    const std::size_t backslash = path.rfind('\\');
    if (backslash == std::string_view::npos || backslash + 1 == path.size()) return std::string(path);
    return std::string(path.substr(backslash + 1));
}

std::string CutTo40(std::string text) {
    constexpr std::size_t kLongest = 40;
    if (text.size() <= kLongest) return text;
    return text.substr(0, kLongest - kDots.size()).append(kDots);
}

std::string DisplayNameOf(std::string_view path, std::string_view fileDescription) {
    std::string description = ShownText(fileDescription);
    return description.empty() ? FileNameOf(path) : CutTo40(std::move(description));
}

void BlankControls(std::string& text) {
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
}

std::string OneLine(std::string text) {
    BlankControls(text);
    return text;
}

std::string ShownText(std::string_view text) {
    std::string shown;
    for (const char c : OneLine(NameDirections(text))) {
        if (c != ' ' || !(shown.empty() || shown.back() == ' ')) shown += c;
    }
    if (shown.ends_with(' ')) shown.pop_back();
    return shown;
}

std::string ShownNameOf(std::string_view path, std::string_view fileDescription, const std::string& unknown) {
    std::string name = ShownText(DisplayNameOf(path, fileDescription));
    return name.empty() ? unknown : name;
}

std::u16string NameDirections(std::u16string_view text) {
    std::u16string named;
    for (const char16_t c : text) {
        const auto mark = std::ranges::find(kDirectionMarks, c, &DirectionMark::code);
        if (mark == std::end(kDirectionMarks)) {
            named += c;
        } else {
            named.append(mark->name.begin(), mark->name.end());
        }
    }
    return named;
}

std::string NameDirections(std::string_view text) {
    std::string named;
    while (!text.empty()) {
        const auto mark =
            std::ranges::find_if(kDirectionMarks, [&](const auto& known) { return text.starts_with(known.utf8); });
        const bool isMark = mark != std::end(kDirectionMarks);
        named += isMark ? mark->name : text.substr(0, 1);
        text.remove_prefix(isMark ? mark->utf8.size() : 1);
    }
    return named;
}

std::string EndThatFits(const std::string& text, const Fits& fits) {
    if (fits(text)) return text;
    const auto cut = [&](std::size_t from) { return std::string(kDots) + text.substr(from); };
    std::size_t first = 1;           // some of it goes
    std::size_t last = text.size();  // in the end nothing but the dots is left, which is taken to fit
    while (first < last) {
        const std::size_t middle = first + (last - first) / 2;
        if (fits(cut(middle))) {
            last = middle;
        } else {
            first = middle + 1;
        }
    }
    return cut(first);
}

}  // namespace brennvar
