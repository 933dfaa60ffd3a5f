// The icon in the notification area and its notices. User-interface thread only.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "base/Windows_win.h"
// windows.h must stand before shellapi.h.
#include <shellapi.h>

namespace brennvar {

class CSystemTray {
public:
    struct Setup {
        HWND owner = nullptr;      // gets the callback message and the default command
        UINT callbackMessage = 0;  // wParam: icon id, lParam: mouse message
        UINT iconId = 0;
        HICON icon = nullptr;  // borrowed, must outlive the tray
        std::string tooltip;   // at most 127 characters are shown
        int defaultCommand = 0;
    };
    // Shell_NotifyIconA, replaced by tests.
    using NotifyCall = std::function<bool(DWORD action, NOTIFYICONDATAA& data)>;

    CSystemTray();
    explicit CSystemTray(NotifyCall notify);
    CSystemTray(const CSystemTray&) = delete;
    CSystemTray& operator=(const CSystemTray&) = delete;
    // Removes the icon.
    ~CSystemTray();

    // Shows the icon. A shell that is still starting is asked again every second, 59 times, while the program goes
    // on; the icon also comes back by itself when the task bar was made anew. False when there is no hidden window.
    bool Create(const Setup& setup);
    void RemoveIcon();
    // A notice at the icon; text of at most 255 and title of at most 63 characters, shown that long if the shell
    // lets us say so (0: as long as the shell likes). While the icon is not there yet, the last notice is kept for
    // it.
    void ShowTrayBalloon(const std::string& text, const std::string& title,
                         std::chrono::seconds duration = std::chrono::seconds(0));
    // What the owner's callback message carried.
    void OnTrayNotification(UINT iconId, UINT mouseMessage) const;

    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] bool IsShown() const { return m_shown; }

private:
    struct Balloon {
        std::string text;
        std::string title;
        std::chrono::seconds duration;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    void Dispatch(UINT message, WPARAM wParam);
    void StartAdding();
    void AddOrWait();
    bool Add();
    void Delete();
    [[nodiscard]] NOTIFYICONDATAA NewData() const;

    const NotifyCall m_notify;
    const UINT m_taskbarCreated;
    Setup m_setup;
    HWND m_window = nullptr;
    std::optional<Balloon> m_waitingBalloon;
    int m_retriesLeft = 0;
    bool m_shown = false;
    bool m_wanted = false;  // from Create to RemoveIcon
};

}  // namespace brennvar
