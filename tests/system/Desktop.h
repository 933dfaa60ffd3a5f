// Another program's windows, as a user or an automation tool sees them.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar::test {

// The first visible window that fits, of the parent's at any depth or, without one, of the top-level ones; null
// when there is none now.
[[nodiscard]] HWND FindVisible(HWND parent, const std::function<bool(HWND)>& fits);
[[nodiscard]] DWORD ProcessOf(HWND window);

// The visible top-level window of the process with this caption, or any but menus without one, other than the given
// one; null when there is none now.
[[nodiscard]] HWND FindProgramWindow(DWORD processId, const std::string& caption, HWND other = nullptr);
// The same, waited for; null when it did not come.
[[nodiscard]] HWND WaitForProgramWindow(DWORD processId, const std::string& caption, HWND other = nullptr);

// The other visible windows and menus of its program that take room on the screen, the topmost first.
[[nodiscard]] std::vector<HWND> OtherWindows(HWND window);

// What the window answers; kNoAnswer, which none does, when it has not in good time.
inline constexpr LRESULT kNoAnswer = -1000;
LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// The window text, asked of the window itself.
[[nodiscard]] std::string WindowText(HWND window);

// Waits until the control is enabled, then presses it (posted, as the dialog may be modal).
[[nodiscard]] bool PressWhenEnabled(HWND dialog, int controlId);

// Of a list of another process; below zero when it does not answer.
[[nodiscard]] int ListRowCount(HWND list);
// The texts of its rows, each cut to so many columns; at most maxRows rows.
[[nodiscard]] std::vector<std::vector<std::string>> ListRows(HWND list, int columns, int maxRows);

// A visible child of the class, at any depth; null when there is none.
[[nodiscard]] HWND FindVisibleChild(HWND parent, const std::string& className);
// The same by its number.
[[nodiscard]] HWND FindVisibleControl(HWND parent, int id);

// What the screen shows where the window is, row by row from the top, each pixel in the order of a bitmap.
using Pixels = std::vector<std::uint32_t>;
[[nodiscard]] Pixels PixelsAt(HWND window);
// The same of a place on the screen.
[[nodiscard]] Pixels PixelsAt(const RECT& place);

// What keeps the input of the window's thread to itself at present (GUI_ flags).
[[nodiscard]] DWORD ModeOf(HWND window);

// The time that the window takes to answer an empty message; limit when it has not answered by then.
[[nodiscard]] std::chrono::milliseconds AnswerTime(HWND window, std::chrono::milliseconds limit);

// How long a window keeps those waiting who ask it something, over rounds of the same thing. Other work of the
// machine may hold it up at any time; what is the program's own doing is there in every round.
class AnswerRounds {
public:
    explicit AnswerRounds(HWND window) : m_window(window) {}

    // Asks once more in this round.
    void Look();
    void EndRound();
    // The longest answer of the round where it was shortest.
    [[nodiscard]] std::chrono::milliseconds LongestOfEach() const { return m_least; }

private:
    HWND m_window;
    std::chrono::milliseconds m_longest{};
    std::chrono::milliseconds m_least = std::chrono::milliseconds::max();
};

}  // namespace brennvar::test
