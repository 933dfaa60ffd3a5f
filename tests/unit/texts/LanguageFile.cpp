#include "unit/texts/LanguageFile.h"

#include <charconv>
#include <fstream>
#include <iterator>

namespace brennvar::test {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kKeyStart = "DL_N_201_";

class Reader {
public:
    explicit Reader(std::string content) { m_file.content = std::move(content); }

    LanguageFile Run() {
        std::string_view rest = m_file.content;
        while (!rest.empty()) {
            ++m_line;
            const std::size_t end = rest.find('\n');
            std::string_view line = rest.substr(0, end);
            rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
            if (end == std::string_view::npos || !line.ends_with('\r')) Fault("does not end with CR LF");
            if (line.ends_with('\r')) line.remove_suffix(1);
            for (const char c : line) {
                if (static_cast<unsigned char>(c) < 0x20) Fault("holds a control character");
            }
            if (!line.empty() && line[0] != ';') TakeLine(line);
        }
        if (!m_hasSection) Fault("[Language] is missing");
        return std::move(m_file);
    }

private:
    void Fault(const std::string& what) { m_file.faults.push_back("line " + std::to_string(m_line) + ": " + what); }

    void TakeLine(std::string_view line) {
        if (line == "[Language]" && !m_hasSection) {
            m_hasSection = true;
            return;
        }
        const std::size_t sign = line.find('=');
        int number = 0;
        const char* const first = line.data() + kKeyStart.size();
        if (!m_hasSection || sign == std::string_view::npos || !line.starts_with(kKeyStart)) {
            return Fault("is no key of [Language]");
        }
        const auto [end, error] = std::from_chars(first, line.data() + sign, number);
        if (error != std::errc() || end != line.data() + sign || *first == '0') return Fault("has no number");
        if (!m_file.texts.empty() && number <= m_file.texts.rbegin()->first) Fault("is not sorted by number");
        const std::string_view value = line.substr(sign + 1);
        // Blanks that get lost are not meant, or ought to be in quotes.
        if (value.find_first_not_of(kBlanks) != 0 || kBlanks.find(value.back()) != std::string_view::npos) {
            Fault("has no text, or blanks around it");
        }
        m_file.texts[number] = IniValue(value);
    }

    LanguageFile m_file;
    int m_line = 0;
    bool m_hasSection = false;
};

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
    return Reader(std::move(content)).Run();
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
