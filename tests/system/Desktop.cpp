#include "Desktop.h"

#include <algorithm>
#include <sstream>

#include "Programs.h"
#include "ui/TreeMessages.h"

namespace brennvar::test {
namespace {

struct WindowSearch {
    DWORD processId;
    std::string text;      // caption or class
    HWND other = nullptr;  // not this one
    HWND found = nullptr;
};

BOOL CALLBACK MatchProgramWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD processId = 0;
    ::GetWindowThreadProcessId(window, &processId);
    if (processId != search.processId || window == search.other || !::IsWindowVisible(window)) return TRUE;
    char caption[256] = {};
    ::GetWindowTextA(window, caption, sizeof caption);
    if (search.text != caption) return TRUE;
    search.found = window;
    return FALSE;
}

BOOL CALLBACK MatchVisibleChild(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    char className[128] = {};
    ::GetClassNameA(window, className, sizeof className);
    if (search.text != className || !::IsWindowVisible(window)) return TRUE;
    search.found = window;
    return FALSE;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    DWORD_PTR answer = 0;
    return ::SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, 5000, &answer)
               ? static_cast<LRESULT>(answer)
               : -1;
}

}  // namespace

HWND FindProgramWindow(DWORD processId, const std::string& caption, HWND other) {
    WindowSearch search{.processId = processId, .text = caption, .other = other};
    ::EnumWindows(MatchProgramWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND WaitForProgramWindow(DWORD processId, const std::string& caption) {
    HWND window = nullptr;
    (void)WaitUntil([&] { return (window = FindProgramWindow(processId, caption)) != nullptr; });
    return window;
}

std::string WindowText(HWND window) {
    std::string text(8192, '\0');
    DWORD_PTR length = 0;
    if (!::SendMessageTimeoutA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL,
                               5000, &length)) {
        return {};
    }
    text.resize(length);
    return text;
}

bool PressWhenEnabled(HWND dialog, int controlId) {
    const HWND control = ::GetDlgItem(dialog, controlId);
    if (control == nullptr || !WaitUntil([&] { return ::IsWindowEnabled(control) != FALSE; })) return false;
    return ::PostMessageA(control, BM_CLICK, 0, 0) != FALSE;
}

int ListRowCount(HWND list) {
    return static_cast<int>(Ask(list, kTreeGetRowCount));
}

std::vector<std::vector<std::string>> ListRows(HWND list, int columns, int maxRows) {
    const int count = std::min(ListRowCount(list), maxRows);
    std::vector<std::vector<std::string>> rows;
    for (int row = 0; row < count; ++row) {
        // Fewer rows than before: the list has been filled anew meanwhile.
        if (Ask(list, kTreeQueryCell, static_cast<WPARAM>(row), -1) < 0) break;
        std::istringstream text(WindowText(list));
        std::vector<std::string> cells(static_cast<std::size_t>(columns));
        for (std::string& cell : cells) std::getline(text, cell, '\t');
        rows.push_back(std::move(cells));
    }
    return rows;
}

HWND FindVisibleChild(HWND parent, const std::string& className) {
    WindowSearch search{.processId = 0, .text = className};
    ::EnumChildWindows(parent, MatchVisibleChild, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::chrono::milliseconds AnswerTime(HWND window, std::chrono::milliseconds limit) {
    const auto start = std::chrono::steady_clock::now();
    DWORD_PTR ignored = 0;
    const LRESULT answered =
        ::SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(limit.count()), &ignored);
    if (answered == 0) return limit;
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

}  // namespace brennvar::test
