#include "prompts/WallpaperValue_win.h"

#include <algorithm>
#include <array>
#include <utility>

namespace brennvar {
namespace {

constexpr char kValueName[] = "Wallpaper";
constexpr std::size_t kLongest = 260;

UniqueKey OpenKey(const std::string& path, REGSAM access) {
    HKEY key = nullptr;
    if (::RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, access, &key) != ERROR_SUCCESS) return UniqueKey();
    return UniqueKey(key);
}

}  // namespace

WinWallpaperValue::WinWallpaperValue(HANDLE stop, std::string key) : m_stop(stop), m_path(std::move(key)) {
    Arm();
}

std::string WinWallpaperValue::NearestKey() const {
    std::string path = m_path;
    while (!path.empty() && !OpenKey(path, KEY_NOTIFY)) {
        path.resize(path.find('\\') == std::string::npos ? 0 : path.rfind('\\'));
    }
    return path;
}

void WinWallpaperValue::Arm() {
    // The key may have been made before the one above it was watched: then it is that key's turn.
    std::string path;
    do {
        path = NearestKey();
        // A notification comes once, and it may be that of the key's end. Letting go of a key that is watched is
        // told too, as a change that was none.
        m_watched.Reset();
        ::ResetEvent(m_changed.Get());
        m_watched = OpenKey(path, KEY_NOTIFY);
        const DWORD values = path == m_path ? REG_NOTIFY_CHANGE_LAST_SET : 0;
        if (m_watched) {
            ::RegNotifyChangeKeyValue(m_watched.Get(), FALSE, REG_NOTIFY_CHANGE_NAME | values, m_changed.Get(),
                                      TRUE);
        }
    } while (path != NearestKey());
}

bool WinWallpaperValue::WaitForChange() {
    const HANDLE events[] = {m_stop, m_changed.Get()};
    if (::WaitForMultipleObjects(2, events, FALSE, INFINITE) != WAIT_OBJECT_0 + 1) return false;
    // Before the value is read: a change meanwhile must not be lost.
    Arm();
    return true;
}

std::optional<std::string> WinWallpaperValue::Read() {
    // With room for a final zero, which the value may lack.
    std::array<char, 0x2000> text{};
    auto size = static_cast<DWORD>(text.size() - 1);
    DWORD type = REG_NONE;
    const UniqueKey key = OpenKey(m_path, KEY_QUERY_VALUE);
    // No key and no value are no wallpaper: what is written there later is a change.
    if (!key) return "";
    const LSTATUS status =
        ::RegQueryValueExA(key.Get(), kValueName, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
    if (status == ERROR_FILE_NOT_FOUND) return "";
    if (status != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return std::nullopt;
    return std::string(text.data()).substr(0, kLongest);
}

void WinWallpaperValue::Write(const std::string& value) {
    const UniqueKey key = OpenKey(m_path, KEY_SET_VALUE);
    if (!key) return;
    ::RegSetValueExA(key.Get(), kValueName, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                     static_cast<DWORD>(value.size() + 1));
}

void WinWallpaperValue::Apply(const std::string& value) {
    std::string path = value;
    ::SystemParametersInfoA(SPI_SETDESKWALLPAPER, 0, path.data(), SPIF_UPDATEINIFILE);
    // Without waiting for every window: one of them belongs to the thread that waits for this one at the end.
    ::SendNotifyMessageA(HWND_BROADCAST, WM_SETTINGCHANGE, SPI_SETDESKWALLPAPER, 0);
}

}  // namespace brennvar
