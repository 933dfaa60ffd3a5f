#include "config/Ini_win.h"

#include "base/Windows_win.h"

namespace brennvar {

std::string CIni::Read(const std::string& section, const std::string& key, const std::string& fallback) const {
    // A default that no file holds tells an absent key from one with an empty value, and keeps our fallback away
    // from the system, which strips trailing blanks from a default.
    constexpr char kAbsent[] = "\x01";
    constexpr std::size_t kLongestValue = 0x10000;
    std::string value(256, '\0');
    for (;;) {
        const DWORD length = ::GetPrivateProfileStringA(section.c_str(), key.c_str(), kAbsent, value.data(),
                                                        static_cast<DWORD>(value.size()), m_path.c_str());
        // Size minus one: the value was cut.
        if (length + 1 < value.size() || value.size() >= kLongestValue) {
            value.resize(length);
            break;
        }
        value.resize(value.size() * 2);
    }
    return value == kAbsent ? fallback : value;
}

bool CIni::Write(const std::string& section, const std::string& key, const std::string& value) const {
    return ::WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), m_path.c_str()) != FALSE;
}

}  // namespace brennvar
