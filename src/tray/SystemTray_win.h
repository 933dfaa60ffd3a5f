// The icon in the notification area. User-interface thread only.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "base/Windows_win.h"
// windows.h must stand before shellapi.h.
#include <shellapi.h>

namespace brennvar {

// What kind of shell this is.
struct TrayPlatform {
    DWORD majorVersion = 0;
    bool isNt = false;
    [[nodiscard]] static TrayPlatform Current();
};

class CSystemTray {
public:
    struct Setup {
        HWND owner = nullptr;      // gets the callback message and the commands; null: the hidden window itself
        UINT callbackMessage = 0;  // wParam: icon id, lParam: mouse message
        std::string tooltip;       // at most 127 characters are shown
        HICON icon = nullptr;      // borrowed, must outlive the tray
        UINT iconId = 0;           // also the number of the menu resource that has the default item
        bool isHidden = false;     // to be shown by ShowIcon
        // What the shell itself says at the icon when it comes; no text, no balloon. 255 and 63 characters.
        std::string balloonText = {};
        std::string balloonTitle = {};
        DWORD balloonFlags = NIIF_NONE;
        std::chrono::seconds balloonTime{10};
        // Right click: shows the menu at this point of the screen.
        std::function<void(POINT)> showMenu = {};
        // The icon could not be shown, or has gone and could not be brought back.
        std::function<void()> lost = {};
    };
    // Shell_NotifyIconA, replaced by tests.
    using NotifyCall = std::function<bool(DWORD action, NOTIFYICONDATAA& data)>;

    CSystemTray();
    explicit CSystemTray(NotifyCall notify, TrayPlatform platform = TrayPlatform::Current());
    CSystemTray(const CSystemTray&) = delete;
    CSystemTray& operator=(const CSystemTray&) = delete;
    // Removes the icon.
    ~CSystemTray();

    // Adds the icon. A shell that is still starting is asked again every second, 59 times, while the program goes
    // on; after that the icon counts as removed and hidden. It comes back by itself when the task bar was made
    // anew. False on a platform before 4, where nothing here does anything, and without a hidden window.
    bool Create(const Setup& setup);
    // These are false when the shell refuses.
    bool SetIcon(HICON icon);  // borrowed; an icon that is hidden keeps it for later
    bool HideIcon();
    bool ShowIcon();
    bool RemoveIcon();  // for good, but for AddIcon
    bool AddIcon();     // with the flags that it was added with first

    // What a left click does: the item of the menu resource at this position of its first sub-menu, or a command.
    void SetMenuDefaultItem(UINT item, bool byPosition);

    // What the owner's callback message carried.
    void OnTrayNotification(UINT iconId, UINT mouseMessage) const;

    [[nodiscard]] HWND Window() const { return m_window; }
    // The user can see it, as far as the shell has told.
    [[nodiscard]] bool IsShown() const { return m_isAdded && !m_hidden && !m_removed; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool MakeWindow();
    // Tries to add, and again each second for so many more times.
    void StartAdding();
    void AddOrWait();
    bool Delete();
    // What holds after the task bar may have lost the icon.
    void OnWorkAreaChanged();
    [[nodiscard]] HWND Target() const { return m_setup.owner ? m_setup.owner : m_window; }
    [[nodiscard]] NOTIFYICONDATAA NewData(UINT flags) const;
    [[nodiscard]] int DefaultCommand() const;

    const NotifyCall m_notify;
    const bool m_enabled;
    const bool m_shell5;  // it has balloons and hidden icons
    const UINT m_taskbarCreated;
    Setup m_setup;
    HWND m_window = nullptr;
    UINT m_flags = 0;  // with which the icon is added
    UINT m_defaultItem = 0;
    bool m_defaultByPosition = true;
    int m_retriesLeft = 0;
    bool m_isAdded = false;
    bool m_isWanted = false;  // from Create or AddIcon to RemoveIcon
    bool m_hidden = false;    // hidden on purpose, removed, or never added
    bool m_removed = false;   // the shell would not have it
};

}  // namespace brennvar
