#include "config/UserValues_win.h"

#include "config/RegKey_win.h"

namespace brennvar {

bool WinUserValues::ReadUserValue(const std::string& name, std::uint32_t& value) const {
    const auto key = CRegKey::Open(HKEY_CURRENT_USER, m_keyPath);
    return key && key->ReadNumber(name, value);
}

bool WinUserValues::WriteUserValue(const std::string& name, std::uint32_t value) {
    const auto key = CRegKey::Create(HKEY_CURRENT_USER, m_keyPath);
    return key && key->WriteNumber(name, value);
}

}  // namespace brennvar
