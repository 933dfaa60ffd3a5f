#include "prompts/ProgramPlace.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

struct KnownFolder {
    std::string_view name;
    ProgramPlace place;
};
constexpr KnownFolder kFolders[] = {
    {"temp", ProgramPlace::Temporary},
    {"tmp", ProgramPlace::Temporary},
    {"downloads", ProgramPlace::Temporary},
    {"appdata", ProgramPlace::UserData},
    // As they were called before, which still leads to AppData.
    {"application data", ProgramPlace::UserData},
    {"local settings", ProgramPlace::UserData},
};

constexpr std::size_t kLongestShortName = 8;  // before its dot (8.3)
constexpr std::size_t kShortNameStart = 6;    // of them are those of the long name, then "~" and a number

// "downlo~1" for "downloads".
bool IsShortNameOf(std::string_view name, std::string_view folder) {
    if (folder.size() <= kLongestShortName || name.size() <= kShortNameStart + 1) return false;
    std::string start(folder);
    std::erase(start, ' ');
    const std::string_view number = name.substr(kShortNameStart + 1);
    return name.starts_with(start.substr(0, kShortNameStart) + '~') &&
           std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view WithoutEnd(std::string_view name) {
    const std::size_t last = name.find_last_not_of(". ");
    return name.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// The names on the way to the file, in lower case.
std::vector<std::string> FoldersOf(std::string_view path) {
    std::vector<std::string> folders;
    // Behind a drive there may be no slash: "C:Temp\a.exe".
    if (path.size() > 1 && path[1] == ':') path.remove_prefix(2);
    for (std::size_t slash = path.find_first_of("\\/"); slash != std::string_view::npos;
         slash = path.find_first_of("\\/")) {
        const std::string_view name = path.substr(0, slash);
        path.remove_prefix(slash + 1);
        if (name == "..") {
            if (!folders.empty()) folders.pop_back();
        } else if (const std::string_view plain = WithoutEnd(name); !plain.empty()) {
            folders.push_back(LowerCase(std::string(plain)));
        }
    }
    return folders;
}

}  // namespace

ProgramPlace PlaceOfProgram(std::string_view path) {
    ProgramPlace place = ProgramPlace::Usual;
    for (const std::string& name : FoldersOf(path)) {
        const auto known = std::ranges::find_if(kFolders, [&](const KnownFolder& folder) {
            return name == folder.name || IsShortNameOf(name, folder.name);
        });
        if (known == std::end(kFolders)) continue;
        if (known->place == ProgramPlace::Temporary) return known->place;
        place = known->place;
    }
    return place;
}

}  // namespace brennvar
