#include "config/Language.h"

#include <utility>

namespace brennvar {

Language::Language(std::unique_ptr<const IniSource> file) : m_file(std::move(file)) {}

std::string Language::GetText(int number, std::string_view english) const {
    if (!m_file || number == 0) return std::string(english);
    std::string text = m_file->Read("Language", "DL_N_201_" + std::to_string(number), "");
    return text.empty() ? std::string(english) : text;
}

}  // namespace brennvar
