// The icon in the notification area. User-interface thread only.
#pragma once

#include <functional>
#include <string>

#include "ui/Window_win.h"
// windows.h must stand before shellapi.h.
#include <shellapi.h>

namespace brennvar {

class CSystemTray final : private CWindow {
public:
    struct Setup {
        HWND owner = nullptr;      // gets the callback message and the commands
        UINT callbackMessage = 0;  // wParam: icon id, lParam: mouse message
        std::string tooltip;       // at most 127 characters are shown
        HICON icon = nullptr;      // borrowed, must outlive the tray
        UINT iconId = 0;           // also the number of the menu resource; a left click is its first item
        std::function<void(POINT)> showMenu = {};  // right click: shows the menu at this point of the screen
        std::function<void()> lost = {};  // it could not be shown, or has gone and could not be brought back
    };
    // Shell_NotifyIconA, replaced by tests.
    using NotifyCall = std::function<bool(DWORD action, NOTIFYICONDATAA& data)>;

    CSystemTray();
    explicit CSystemTray(NotifyCall notify);
    // Removes the icon.
    ~CSystemTray() override;

    // Adds the icon. A shell that is still starting is asked again every second, 59 times, while the program goes
    // on; after that the icon counts as lost. It comes back by itself when the task bar was made anew. False
    // without a hidden window.
    bool Create(const Setup& setup);
    // False when the shell refuses.
    bool SetIcon(HICON icon);  // borrowed; an icon that is not shown keeps it for later
    bool RemoveIcon();         // for good

    // What the owner's callback message carried.
    void OnTrayNotification(UINT iconId, UINT mouseMessage) const;

    // Hidden; it hears of new task bars.
    using CWindow::Window;
    // The user can see it, as far as the shell has told.
    [[nodiscard]] bool IsShown() const { return m_isAdded; }

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Tries to add, and again each second for so many more times.
    void StartAdding();
    void AddOrWait();
    // The task bar may have lost the icon: it is added again, and tried anew like a first time when that fails.
    void OnWorkAreaChanged();
    bool Notify(DWORD action, UINT flags) const;
    [[nodiscard]] int DefaultCommand() const;

    const NotifyCall m_notify;
    const UINT m_taskbarCreated;
    Setup m_setup;
    int m_retriesLeft = 0;
    bool m_isAdded = false;
    bool m_isWanted = false;  // from Create to RemoveIcon
};

}  // namespace brennvar
