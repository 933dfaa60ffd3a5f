#include "config/Language.h"

#include <utility>

namespace brennvar {

Language::Language(std::unique_ptr<const IniSource> file) : m_file(std::move(file)) {}

std::string Language::GetText(int number, std::string_view english) const {
    if (!m_file || number == 0) return std::string(english);
    std::string text = m_file->Read("Language", "DL_N_201_" + std::to_string(number), "");
    return text.empty() ? std::string(english) : text;
}

std::string FillText(std::string_view text, std::initializer_list<std::string_view> values) {
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPlace = text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9';
        const auto number = isPlace ? static_cast<std::size_t>(text[i + 1] - '1') : values.size();
        if (number < values.size()) {
            filled += values.begin()[number];
            ++i;
        } else {
            filled += text[i];
        }
    }
    return filled;
}

}  // namespace brennvar
