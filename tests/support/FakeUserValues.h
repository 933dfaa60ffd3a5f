// The user's values, kept in memory.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "config/UserValues.h"

namespace brennvar::test {

class FakeUserValues final : public UserValues {
public:
    std::map<std::string, std::uint32_t> stored;

    [[nodiscard]] bool ReadUserValue(const std::string& name, std::uint32_t& value) const override {
        const auto at = stored.find(name);
        if (at != stored.end()) value = at->second;
        return at != stored.end();
    }
    bool WriteUserValue(const std::string& name, std::uint32_t value) override {
        stored[name] = value;
        return true;
    }
};

}  // namespace brennvar::test
