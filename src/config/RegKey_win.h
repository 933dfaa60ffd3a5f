// An open registry key, closed by the destructor.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Handles_win.h"

namespace brennvar {

class CRegKey {
public:
    // An existing key, for reading. Nothing when it is not there.
    [[nodiscard]] static std::optional<CRegKey> Open(HKEY root, const std::string& path);
    // For reading and writing, with all keys above it; made as needed.
    [[nodiscard]] static std::optional<CRegKey> Create(HKEY root, const std::string& path);

    // False, with value as it was, when there is no REG_DWORD of this name.
    [[nodiscard]] bool ReadNumber(const std::string& name, std::uint32_t& value) const;
    [[nodiscard]] bool WriteNumber(const std::string& name, std::uint32_t value) const;

    [[nodiscard]] HKEY Get() const { return m_key.Get(); }

private:
    explicit CRegKey(HKEY key) : m_key(key) {}
    UniqueKey m_key;
};

}  // namespace brennvar
