// An INI file in memory: values by "section/key".
#pragma once

#include <map>
#include <string>
#include <utility>

#include "config/IniSource.h"

namespace brennvar::test {

class FakeIni final : public IniSource {
public:
    using Values = std::map<std::string, std::string>;

    explicit FakeIni(Values values) : m_values(std::move(values)) {}
    [[nodiscard]] std::string Read(const std::string& section, const std::string& key,
                                   const std::string& fallback) const override {
        const auto at = m_values.find(section + "/" + key);
        return at == m_values.end() ? fallback : at->second;
    }

private:
    Values m_values;
};

}  // namespace brennvar::test
