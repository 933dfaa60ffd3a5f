#include "config/RegKey_win.h"

namespace brennvar {

std::optional<CRegKey> CRegKey::Open(HKEY root, const std::string& path) {
    HKEY key = nullptr;
    if (::RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return std::nullopt;
    return CRegKey(key);
}

std::optional<CRegKey> CRegKey::Create(HKEY root, const std::string& path) {
    HKEY key = nullptr;
    if (::RegCreateKeyExA(root, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ | KEY_WRITE, nullptr,
                          &key, nullptr) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return CRegKey(key);
}

bool CRegKey::ReadNumber(const std::string& name, std::uint32_t& value) const {
    DWORD number = 0;
    DWORD type = 0;
    DWORD size = sizeof number;
    auto* const bytes = reinterpret_cast<BYTE*>(&number);
    if (::RegQueryValueExA(m_key.Get(), name.c_str(), nullptr, &type, bytes, &size) != ERROR_SUCCESS) return false;
    if (type != REG_DWORD || size != sizeof number) return false;
    value = number;
    return true;
}

bool CRegKey::WriteNumber(const std::string& name, std::uint32_t value) const {
    const DWORD number = value;
    return ::RegSetValueExA(m_key.Get(), name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                            sizeof number) == ERROR_SUCCESS;
}

}  // namespace brennvar
