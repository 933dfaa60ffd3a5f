// The user's values in the registry. Any thread.
#pragma once

#include <string>
#include <utility>

#include "config/UserValues.h"

namespace brennvar {

// Below HKEY_CURRENT_USER.
inline constexpr char kUserKeyPath[] = R"(Software\Quorlan\Brennvar Firewall)";

class WinUserValues final : public UserValues {
public:
    explicit WinUserValues(std::string keyPath = kUserKeyPath) : m_keyPath(std::move(keyPath)) {}
    [[nodiscard]] bool ReadUserValue(const std::string& name, std::uint32_t& value) const override;
    // Creates the key when it is missing.
    bool WriteUserValue(const std::string& name, std::uint32_t value) override;

private:
    std::string m_keyPath;
};

}  // namespace brennvar
