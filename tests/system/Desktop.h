// Another program's windows, as a user or an automation tool sees them.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar::test {

// The visible top-level window of the process with this caption, other than the given one; null when there is none
// now.
[[nodiscard]] HWND FindProgramWindow(DWORD processId, const std::string& caption, HWND other = nullptr);
// The same, waited for; null when it did not come.
[[nodiscard]] HWND WaitForProgramWindow(DWORD processId, const std::string& caption);

// The window text, asked of the window itself.
[[nodiscard]] std::string WindowText(HWND window);

// Waits until the control is enabled, then presses it (posted, as the dialog may be modal).
[[nodiscard]] bool PressWhenEnabled(HWND dialog, int controlId);

// Of a list of another process; -1 when it does not answer.
[[nodiscard]] int ListRowCount(HWND list);
// The texts of its rows, each cut to so many columns; at most maxRows rows.
[[nodiscard]] std::vector<std::vector<std::string>> ListRows(HWND list, int columns, int maxRows);

// A visible child of the class, at any depth; null when there is none.
[[nodiscard]] HWND FindVisibleChild(HWND parent, const std::string& className);

// The time that the window takes to answer an empty message; limit when it has not answered by then.
[[nodiscard]] std::chrono::milliseconds AnswerTime(HWND window, std::chrono::milliseconds limit);

}  // namespace brennvar::test
