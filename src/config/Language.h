// The texts that the user sees. A language file translates them by number; the English text stands at the place of
// use and stands in for whatever the file lacks.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "config/IniSource.h"
#include "config/Text.h"

namespace brennvar {

class Language {
public:
    // The language file; null: English only.
    explicit Language(std::unique_ptr<const IniSource> file);
    // The text with this number, in the file's code page. English when the file has none, or an empty one, or the
    // number is 0 (a text that is not translated). Any thread.
    [[nodiscard]] std::string GetText(int number, std::string_view english) const;
    [[nodiscard]] std::string GetText(const Text& text) const { return GetText(text.number, text.english); }

private:
    std::unique_ptr<const IniSource> m_file;
};

// The text with the values in the places of "%1", "%2" and so on, in whichever order the language has them. A place
// without a value stays; what is in a value is not a place.
[[nodiscard]] std::string FillText(std::string_view text, std::initializer_list<std::string_view> values);

}  // namespace brennvar
