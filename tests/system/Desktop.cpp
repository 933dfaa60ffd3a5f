#include "Desktop.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "Programs.h"
#include "base/Handles_win.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {

HWND FindVisible(HWND parent, const std::function<bool(HWND)>& fits) {
    struct Search {
        const std::function<bool(HWND)>& fits;
        HWND found;
    } search{fits, nullptr};
    const WNDENUMPROC look = [](HWND window, LPARAM parameter) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(parameter);
        if (::IsWindowVisible(window) && wanted.fits(window)) wanted.found = window;
        return wanted.found == nullptr;
    };
    parent != nullptr ? ::EnumChildWindows(parent, look, reinterpret_cast<LPARAM>(&search))
                      : ::EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

DWORD ProcessOf(HWND window) {
    DWORD id = 0;
    ::GetWindowThreadProcessId(window, &id);
    return id;
}

HWND FindProgramWindow(DWORD processId, const std::string& caption, HWND other) {
    return FindVisible(nullptr, [&](HWND window) {
        constexpr DWORD kMenuClass = 0x8000;
        if (ProcessOf(window) != processId || window == other) return false;
        char text[256] = {};
        ::GetWindowTextA(window, text, sizeof text);
        return caption.empty() ? ::GetClassLongA(window, GCW_ATOM) != kMenuClass : caption == text;
    });
}

HWND WaitForProgramWindow(DWORD processId, const std::string& caption, HWND other) {
    HWND window = nullptr;
    (void)WaitUntil([&] { return (window = FindProgramWindow(processId, caption, other)) != nullptr; });
    return window;
}

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr auto kLimitMs = static_cast<UINT>(std::chrono::milliseconds(kPatience).count());
    DWORD_PTR answer = 0;
    return ::SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, kLimitMs, &answer)
               ? static_cast<LRESULT>(answer)
               : kNoAnswer;
}

std::string WindowText(HWND window) {
    std::string text(8192, '\0');
    const LRESULT length = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    if (length < 0) return {};
    text.resize(static_cast<std::size_t>(length));
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

std::vector<HWND> OtherWindows(HWND window) {
    std::vector<HWND> others;
    (void)FindVisible(nullptr, [&](HWND other) {
        RECT place{};
        ::GetWindowRect(other, &place);
        if (other != window && ProcessOf(other) == ProcessOf(window) && !::IsRectEmpty(&place))
            others.push_back(other);
        return false;
    });
    return others;
}

HWND FindVisibleChild(HWND parent, const std::string& className) {
    return FindVisible(parent, [&](HWND window) {
        char name[128] = {};
        ::GetClassNameA(window, name, sizeof name);
        return className == name;
    });
}

HWND FindVisibleControl(HWND parent, int id) {
    return FindVisible(parent, [=](HWND window) { return ::GetDlgCtrlID(window) == id; });
}

Pixels PixelsAt(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return PixelsAt(place);
}

Pixels PixelsAt(const RECT& place) {
    const LONG width = place.right - place.left, height = place.bottom - place.top;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const UniqueBitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) return {};
    const HDC screen = ::GetDC(nullptr);
    const UniqueMemoryDc memory(::CreateCompatibleDC(screen));
    const HGDIOBJ old = ::SelectObject(memory.Get(), bitmap.Get());
    ::BitBlt(memory.Get(), 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    ::SelectObject(memory.Get(), old);
    ::ReleaseDC(nullptr, screen);
    const auto* first = static_cast<const std::uint32_t*>(bits);
    return {first, first + static_cast<std::ptrdiff_t>(width) * height};
}

DWORD ModeOf(HWND window) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    return ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &state) ? state.flags : 0;
}

std::chrono::milliseconds AnswerTime(HWND window, std::chrono::milliseconds limit) {
    const auto start = std::chrono::steady_clock::now();
    DWORD_PTR ignored = 0;
    const LRESULT answered =
        ::SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(limit.count()), &ignored);
    if (answered == 0) return limit;
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

void AnswerRounds::Look() {
    m_longest = std::max(m_longest, AnswerTime(m_window, kPatience));
}

void AnswerRounds::EndRound() {
    m_least = std::min(m_least, std::exchange(m_longest, {}));
}

}  // namespace brennvar::test
