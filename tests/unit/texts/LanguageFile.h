// A language file as it lies in the sources, checked line by line.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <vector>

namespace brennvar::test {

struct LanguageFile {
    std::map<int, std::string> texts;  // by number, as the program gets them
    std::vector<std::string> faults;   // lines that are none of a proper file
};

inline LanguageFile ParseLanguageFile(const std::string& content) {
    // Blanks around a value get lost: they are not meant, or ought to be in quotes.
    static const std::regex kPair("DL_N_201_([1-9][0-9]*)=([^\\x01- ](?:[^\\x01-\\x1F]*[^\\x01- ])?)\r");
    static const std::regex kOther("(?:;[^\\x01-\\x1F]*)?\r");
    LanguageFile file;
    int sections = 0;
    for (std::size_t at = 0; at < content.size();) {
        const std::string line = content.substr(at, content.find('\n', at) - at);
        at += line.size() + 1;
        std::smatch match;
        const bool isSection = line == "[Language]\r" && ++sections == 1;
        const bool isPair = std::regex_match(line, match, kPair);
        const int number = isPair ? std::stoi(match[1]) : 0;
        const bool isSorted = file.texts.empty() || number > file.texts.rbegin()->first;
        if (isPair ? sections == 0 || !isSorted : !isSection && !std::regex_match(line, kOther)) {
            file.faults.push_back(line);
        }
        if (!isPair) continue;
        // Of the quotes around a value the system takes one pair away.
        std::string& text = file.texts[number] = match[2];
        const bool isQuoted = text.size() >= 2 && (text.front() == '"' || text.front() == '\'');
        if (isQuoted && text.back() == text.front()) text = text.substr(1, text.size() - 2);
    }
    if (sections == 0 || !content.ends_with("\r\n")) file.faults.emplace_back("no section, or no last line break");
    return file;
}

inline std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
inline const std::filesystem::path kSourceFolder = BRENNVAR_SOURCE_FOLDER;
inline std::filesystem::path LanguageFileIn(const std::string& language) {
    return kSourceFolder / "assets" / "Languages" / language / "default.ini";
}
inline LanguageFile ReadLanguageFile(const std::string& language) {
    return ParseLanguageFile(ReadWholeFile(LanguageFileIn(language)));
}

}  // namespace brennvar::test
