#include "config/Settings.h"

namespace brennvar {
namespace {

std::string ReadFolderName(const IniSource& settings, const std::string& section, const std::string& fallback) {
    constexpr char kWhiteSpace[] = " \t\r\n\v\f";
    const std::string value = settings.Read(section, "Directory", fallback);
    const std::size_t first = value.find_first_not_of(kWhiteSpace);
    if (first == std::string::npos) return fallback;  // a blank name names no folder
    std::string name = value.substr(first, value.find_last_not_of(kWhiteSpace) - first + 1);
    // A folder beside the program and no other: texts and pictures from elsewhere could say anything.
    const bool isElsewhere = name.find_first_of("\\/:") != std::string::npos || name == "." || name == "..";
    return isElsewhere ? fallback : name;
}

}  // namespace

std::string ReadLanguageName(const IniSource& settings) {
    return ReadFolderName(settings, "Language", "English");
}
std::string ReadSkinName(const IniSource& settings) {
    return ReadFolderName(settings, "Skin", "Default");
}

}  // namespace brennvar
