// A language file as it lies in the sources, checked line by line.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace brennvar::test {

struct LanguageFile {
    std::map<int, std::string> texts;  // by number, as the program gets them
    std::string content;
    std::vector<std::string> faults;
};

// What the system makes of a value: blanks around it go, and one pair of quotes.
[[nodiscard]] std::string IniValue(std::string_view value);
[[nodiscard]] LanguageFile ReadLanguageFile(std::string content);

[[nodiscard]] std::string ReadWholeFile(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path SourceFolder();
[[nodiscard]] std::filesystem::path LanguageFileIn(const std::string& language);

}  // namespace brennvar::test
