#include "rules/SafeEntryName.h"

#include <algorithm>
#include <array>
#include <vector>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

constexpr std::string_view kSeparators = "\\/";

bool IsSeparator(char c) {
    return kSeparators.find(c) != std::string_view::npos;
}

// How many characters the next step of the loop drops; 0: it is over.
std::size_t NextDrop(std::string_view name) {
    if (name.size() >= 2 && name[1] == ':') return 2;
    if (!name.empty() && IsSeparator(name.front())) return 1;
    if (name.starts_with("..\\") || name.starts_with("../")) return 3;
    constexpr std::array<std::string_view, 4> kClimbs = {"\\..\\", "\\../", "/../", "/..\\"};
    for (const std::string_view climb : kClimbs) {
        const std::size_t at = name.find(climb);
        if (at != std::string_view::npos) return at + climb.size();
    }
    return 0;
}

std::vector<std::string_view> PartsOf(std::string_view name) {
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t end = name.find_first_of(kSeparators);
        parts.push_back(name.substr(0, end));
        if (end == std::string_view::npos) return parts;
        name.remove_prefix(end + 1);
    }
}

std::string_view WithoutTail(std::string_view part) {
    const std::size_t last = part.find_last_not_of(". ");
    return part.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// A part that Windows takes for a device, whatever its extension: "nul", "COM1.txt", "con .conf".
bool IsDevice(std::string_view part) {
    std::string_view name = part.substr(0, part.find('.'));
    name = WithoutTail(name);
    constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    const auto isNamed = [name](std::string_view device) { return EqualsIgnoringCase(name, device); };
    if (std::any_of(kDevices.begin(), kDevices.end(), isNamed)) return true;
    const std::string_view port = name.substr(0, 3);
    if (!EqualsIgnoringCase(port, "COM") && !EqualsIgnoringCase(port, "LPT")) return false;
    const std::string_view number = name.substr(3);
    // The superscript digits 1 to 3 count as digits, in the code pages of Windows and in UTF-8.
    constexpr std::array<std::string_view, 6> kSuperscripts = {"\xB9",     "\xB2",     "\xB3",
                                                               "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"};
    return (number.size() == 1 && number.front() >= '0' && number.front() <= '9') ||
           std::find(kSuperscripts.begin(), kSuperscripts.end(), number) != kSuperscripts.end();
}

// The form of the second, short name that Windows gives to a file with a long one: "RULES~1.CON". Which file it
// means only the disk knows.
bool IsShortAlias(std::string_view part) {
    constexpr std::size_t kLongestStem = 8;
    constexpr std::size_t kLongestExtension = 3;
    const std::size_t dot = std::min(part.find('.'), part.size());
    const std::string_view stem = part.substr(0, dot);
    const std::string_view extension = part.substr(std::min(dot + 1, part.size()));
    const std::size_t tilde = stem.rfind('~');
    if (stem.size() > kLongestStem || extension.size() > kLongestExtension ||
        extension.find('.') != std::string_view::npos || tilde == std::string_view::npos) {
        return false;
    }
    const std::string_view number = stem.substr(tilde + 1);
    return !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
}

bool CanNameAFile(std::string_view part) {
    return std::none_of(part.begin(), part.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' || std::string_view("<>\"|?*").find(c) != std::string_view::npos;
    });
}

}  // namespace

std::optional<std::string> SafeEntryName(std::string_view stored) {
    std::string_view name = stored;
    while (const std::size_t drop = NextDrop(name)) name.remove_prefix(drop);
    if (name.empty() || name == "." || name == ".." || name.ends_with("\\..") || name.ends_with("/..") ||
        name.find(':') != std::string_view::npos) {
        return std::nullopt;
    }
    const auto parts = PartsOf(name);
    if (std::any_of(parts.begin(), parts.end(), IsDevice)) return std::nullopt;
    return std::string(name);
}

std::optional<std::string> EntryPath(std::string_view stored) {
    const auto name = SafeEntryName(stored);
    if (!name || IsSeparator(name->back())) return std::nullopt;
    std::string path;
    for (const std::string_view part : PartsOf(*name)) {
        if (part.empty() || part == ".") continue;
        const std::string_view kept = WithoutTail(part);
        // "..." and ".. " are nothing that a file can be called, and no two versions of Windows agree on them.
        if (kept.empty() || !CanNameAFile(kept) || IsShortAlias(kept)) return std::nullopt;
        if (!path.empty()) path += '/';
        path += kept;
    }
    if (path.empty()) return std::nullopt;
    return path;
}

}  // namespace brennvar
