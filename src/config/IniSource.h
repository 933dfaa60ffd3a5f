// Texts by section and key, as a seam: a language file, a skin file, settings.ini.
#pragma once

#include <string>

namespace brennvar {

class IniSource {
public:
    virtual ~IniSource() = default;
    // The value of the key, or the fallback when the file, the section or the key is absent. Any thread.
    [[nodiscard]] virtual std::string Read(const std::string& section, const std::string& key,
                                           const std::string& fallback) const = 0;
};

}  // namespace brennvar
