#include "unit/texts/LanguageFile.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <utility>

namespace brennvar::test {
namespace {

constexpr std::string_view kBlanks = " \t";
}  // namespace

std::string IniValue(std::string_view value) {
    const std::size_t first = value.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    value = value.substr(first, value.find_last_not_of(kBlanks) - first + 1);
    const char quote = value.front();
    if (value.size() >= 2 && (quote == '"' || quote == '\'') && value.back() == quote) {
        value = value.substr(1, value.size() - 2);
    }
    return std::string(value);
}

LanguageFile ReadLanguageFile(std::string content) {
    // Blanks around a text get lost: they are not meant, or ought to be in quotes.
    static const std::regex kText(R"(DL_N_201_([1-9][0-9]{0,5})=([^ \t].*))");
    LanguageFile file;
    file.content = std::move(content);
    int number = 0;
    bool hasSection = false;
    const auto fault = [&](const char* what) {
        file.faults.push_back("line " + std::to_string(number) + ": " + what);
    };
    std::istringstream stream(file.content);
    for (std::string line; std::getline(stream, line);) {
        ++number;
        if (stream.eof() || !line.ends_with('\r')) fault("does not end with CR LF");
        if (line.ends_with('\r')) line.pop_back();
        if (std::any_of(line.begin(), line.end(), [](unsigned char c) { return c < 0x20; })) {
            fault("holds a control character");
        }
        if (line.empty() || line[0] == ';') continue;
        if (line == "[Language]" && !std::exchange(hasSection, true)) continue;
        std::smatch match;
        if (!hasSection || !std::regex_match(line, match, kText)) {
            fault("is no text of [Language]");
            continue;
        }
        const int key = std::stoi(match[1]);
        if (!file.texts.empty() && key <= file.texts.rbegin()->first) fault("is not sorted by number");
        if (kBlanks.find(line.back()) != std::string_view::npos) fault("has blanks at its end");
        file.texts[key] = IniValue(match[2].str());
    }
    if (!hasSection) fault("[Language] is missing");
    return file;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::filesystem::path SourceFolder() {
    return BRENNVAR_SOURCE_FOLDER;
}

std::filesystem::path LanguageFileIn(const std::string& language) {
    return SourceFolder() / "assets" / "Languages" / language / "default.ini";
}

}  // namespace brennvar::test
