// An INI file as it was when a section of it was first asked for: one look at the file for all keys of a section,
// where CIni looks for each key. The syntax is the system's, as with CIni.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "config/IniSource.h"

namespace brennvar {

class CIniSnapshot final : public IniSource {
public:
    // A full path; the file need not exist.
    explicit CIniSnapshot(std::string path) : m_path(std::move(path)) {}
    [[nodiscard]] std::string Read(const std::string& section, const std::string& key,
                                   const std::string& fallback) const override;

private:
    using Values = std::map<std::string, std::string>;  // by key in lower case
    [[nodiscard]] Values Load(const std::string& section) const;

    std::string m_path;
    mutable std::mutex m_lock;
    mutable std::map<std::string, Values> m_sections;
};

}  // namespace brennvar
