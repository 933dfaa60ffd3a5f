// Notices at the notification area: one balloon in the skin, of which a new notice takes possession. User-interface
// thread only.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "base/Handles_win.h"
#include "ui/Balloon_win.h"

namespace brennvar {

class TrayBalloon {
public:
    // The fonts are borrowed. openLink gets the link of a notice when the user clicks it.
    TrayBalloon(const CFonts& fonts, std::function<void(const std::string& link)> openLink)
        : m_balloon(fonts), m_openLink(std::move(openLink)) {}

    struct Notice {
        std::string text;  // cut to what a balloon can hold; nothing is shown for an empty one
        std::string title;
        std::string time = {};            // when it came, as people of this place write it; may be empty
        std::string link = {};            // shown when it is an address of the web
        int icon = 0;                     // its resource; the balloon keeps that of the first notice
        std::chrono::seconds timeout{0};  // 0: until it is closed
        HWND parent = nullptr;            // of the first notice: the window that the balloon belongs to
    };
    // owner: comes to the foreground if it is on the screen.
    void ShowTrayBalloon(HWND owner, const Notice& notice);
    void Hide() { m_balloon.Hide(); }

private:
    bool m_isFirst = true;
    UniqueIcon m_icon;
    CBalloon m_balloon;
    const std::function<void(const std::string& link)> m_openLink;
};

}  // namespace brennvar
