// A window walked by Tab, as a user does who has no pointer: what is a stop, in which order they come, and whether
// it is seen where the keyboard is.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "ScreenPicture.h"

namespace brennvar::test {

class TabWalk {
public:
    // The window is in front. Two rounds, which end where they began.
    explicit TabWalk(HWND window);

    [[nodiscard]] const std::vector<HWND>& Stops() const { return m_stops; }
    // Each a sentence: stops on which nobody sees the keyboard.
    [[nodiscard]] const std::vector<std::string>& Unseen() const { return m_unseen; }
    // Controls that are no stops or are none that can be worked with, and stops that come before what is read
    // sooner.
    [[nodiscard]] const std::vector<std::string>& Misplaced() const { return m_misplaced; }

private:
    // The next stop of Tab; null when the keyboard stays where it is.
    [[nodiscard]] HWND Next() const;
    // A second round: each stop has to be seen to get the keyboard.
    void SeeStops();
    // The stop that has the keyboard, itself or in a part of it.
    [[nodiscard]] HWND Stop() const;
    void CheckStops();
    void CheckOrder();

    HWND m_window;
    std::set<HWND> m_wanted;  // what can be worked with
    std::vector<HWND> m_stops;
    std::vector<std::string> m_unseen, m_misplaced;
};

}  // namespace brennvar::test
