// An INI file through the system's private-profile functions: the system's syntax, single-byte text.
#pragma once

#include <string>
#include <utility>

#include "config/IniSource.h"

namespace brennvar {

class CIni final : public IniSource {
public:
    // A full path; the file need not exist. (A bare name would be looked for in the Windows folder.)
    explicit CIni(std::string path) : m_path(std::move(path)) {}
    [[nodiscard]] std::string Read(const std::string& section, const std::string& key,
                                   const std::string& fallback) const override;
    // Creates the file, the section and the key as needed; not the folder. False when that failed.
    [[nodiscard]] bool Write(const std::string& section, const std::string& key, const std::string& value) const;

private:
    std::string m_path;
};

}  // namespace brennvar
