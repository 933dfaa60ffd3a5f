// Works a program's windows from a script, step by step: demo_driver STEP...
//   wait:WINDOW           until the window is there and answers
//   gone:WINDOW           until it is not
//   command:WINDOW:N      posts the window the command N, as a menu or a button does
//   page:WINDOW:N         the same, until the window has dealt with it: for what opens no dialog
//   mode:WINDOW:N         the command N, which changes the protection mode, until the window shows that
//   enabled:WINDOW:ID     until the control ID of the window is enabled
//   press:WINDOW:ID       presses the button ID of the window as soon as it is enabled
//   click:WINDOW:ID       clicks the check box or button ID, in the window at any depth
//   choose:WINDOW:ID:N    chooses the N-th entry, from 0, of the list box ID, where that opens no dialog
//   pick:WINDOW:ID:N      the same of a combo box
//   text:WINDOW:ID:TEXT   puts the text into the field ID
//   rows:WINDOW:N         until a list of the window shows at least N rows
//   size:WINDOW:WxH       until the window has been sized, pixels
//   maximise:WINDOW       until it fills the screen
//   restore:WINDOW        until it no longer does
//   picture:WINDOW:FILE   a picture of the window (BMP), when it no longer changes
//   opened:WINDOW:N       until its program shows N other windows or menus
//   popups:WINDOW:FILE    a picture of these
//   sort:WINDOW:N         clicks the header of column N, from 0, of its list
//   cell:WINDOW:RxC       clicks a cell of its list: row and column, from 0; RxC+ as with Ctrl
//   key:WINDOW:N          presses the key with the virtual code N in its list
//   menu:WINDOW           opens the menu of its list
//   do:WINDOW:N           does the action N of its list with the selected row, as its menu does
//   leave:WINDOW          closes the menu
//   close:WINDOW          asks the window to close
// WINDOW: the caption of a visible window, or "#ID" for the visible window that has a control with that number.
// Exit code 0 when all steps were done, 1 at the first one that was not.
#include "Desktop.h"
#include "Picture.h"
#include "Programs.h"
#include "config/ResourceIds.h"
#include "tree/TreeMessages_win.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

namespace brennvar::test {
namespace {

HWND WindowWithControl(int id) {
    return FindVisible(nullptr, [=](HWND window) { return ::GetDlgItem(window, id) != nullptr; });
}

HWND VisibleWindow(const std::string& name) {
    if (name.starts_with('#')) return WindowWithControl(std::atoi(name.c_str() + 1));
    const HWND window = ::FindWindowA(nullptr, name.c_str());
    return window != nullptr && ::IsWindowVisible(window) ? window : nullptr;
}

bool WaitForWindow(const std::string& name) {
    return WaitUntil([&] { return VisibleWindow(name) != nullptr; }) &&
           AnswerTime(VisibleWindow(name), kPatience) < kPatience;
}

bool ListHasRows(HWND window, int rows) {
    const HWND list = FindVisibleChild(window, kTreeClass);
    return list != nullptr && ListRowCount(list) >= rows;
}

bool ClickCell(HWND window, const std::string& cell) {
    const HWND list = FindVisibleChild(window, kTreeClass);
    const auto row = static_cast<WPARAM>(std::atoi(cell.c_str()));
    const LPARAM column = std::atoi(cell.c_str() + cell.find('x') + 1);
    const LRESULT corner = list != nullptr ? Ask(list, kTreeGetCellLeftTop, row, column) : -1;
    if (corner < 0) return false;
    const LPARAM place = MAKELPARAM(LOWORD(corner) + 8, HIWORD(corner) + 8);
    const WPARAM keys = cell.ends_with('+') ? MK_LBUTTON | MK_CONTROL : MK_LBUTTON;
    return Ask(list, WM_LBUTTONDOWN, keys, place) == 0 && Ask(list, WM_LBUTTONUP, 0, place) == 0;
}

bool SizeWindow(HWND window, const std::string& size) {
    const int width = std::atoi(size.c_str());
    const int height = std::atoi(size.c_str() + size.find('x') + 1);
    ::SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return WaitUntil([&] {
        RECT place;
        return ::GetWindowRect(window, &place) && place.right - place.left == width &&
               place.bottom - place.top == height;
    });
}

bool Maximise(HWND window, bool isWanted) {
    ::PostMessageA(window, WM_SYSCOMMAND, isWanted ? SC_MAXIMIZE : SC_RESTORE, 0);
    return WaitUntil([&] { return (::IsZoomed(window) != FALSE) == isWanted; });
}

// Of a list box or a combo box, with its message that chooses and its notice of it.
bool ChooseEntry(HWND window, const std::string& box, UINT message, WORD notice) {
    const int id = std::atoi(box.c_str());
    const auto entry = static_cast<WPARAM>(std::atoi(box.c_str() + box.find(':') + 1));
    const HWND control = FindVisibleControl(window, id);
    return control != nullptr && Ask(control, message, entry) == static_cast<LRESULT>(entry) &&
           Ask(::GetParent(control), WM_COMMAND, MAKEWPARAM(id, notice), reinterpret_cast<LPARAM>(control)) !=
               kNoAnswer;
}

// The button at the foot of the column shows the mode.
bool ChangeMode(HWND window, int command) {
    const HWND button = FindVisibleControl(window, IDC_STATUS_MODE);
    const RECT place = PlaceOfWindow(button);
    const Pixels before = PixelsAt(place);
    return button != nullptr && ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(command), 0) &&
           WaitUntil([&] { return PixelsAt(place) != before; });
}

HWND MenuOwner(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    const bool isKnown = ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &info) != FALSE;
    return isKnown && (info.flags & GUI_INMENUMODE) != 0 ? info.hwndMenuOwner : nullptr;
}

bool SetFieldText(HWND window, const std::string& idAndText) {
    const HWND field = FindVisibleControl(window, std::atoi(idAndText.c_str()));
    const std::string text = idAndText.substr(std::min(idAndText.find(':') + 1, idAndText.size()));
    return Ask(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str())) == TRUE;
}

bool OpenListMenu(HWND window) {
    // As from the keyboard.
    const HWND list = FindVisibleChild(window, kTreeClass);
    return ::PostMessageA(list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list), -1) &&
           WaitUntil([&] { return MenuOwner(window) != nullptr; });
}

bool LeaveMenu(HWND window) {
    ::PostMessageA(MenuOwner(window), WM_CANCELMODE, 0, 0);
    return WaitUntil([&] { return MenuOwner(window) == nullptr; });
}

bool WritePopups(HWND window, const std::string& path) {
    // They may grow while the picture is taken: a second notice takes the place of the first.
    return WaitUntil([&] {
        const RECT place = PlaceOfOthers(window);
        if (::IsRectEmpty(&place) || !WritePicture(window, place, path)) return false;
        const RECT after = PlaceOfOthers(window);
        return ::EqualRect(&place, &after) != FALSE;
    });
}

// One step on a window that is there.
bool Work(HWND window, const std::string& verb, const std::string& rest) {
    const int number = std::atoi(rest.c_str());
    if (verb == "command") return ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(number), 0) != FALSE;
    if (verb == "page") return Ask(window, WM_COMMAND, static_cast<WPARAM>(number)) != kNoAnswer;
    if (verb == "mode") return ChangeMode(window, number);
    if (verb == "enabled") {
        return WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(window, number)) != FALSE; });
    }
    if (verb == "press") return PressWhenEnabled(window, number);
    if (verb == "choose") return ChooseEntry(window, rest, LB_SETCURSEL, LBN_SELCHANGE);
    if (verb == "pick") return ChooseEntry(window, rest, CB_SETCURSEL, CBN_SELCHANGE);
    if (verb == "click") return ::PostMessageA(FindVisibleControl(window, number), BM_CLICK, 0, 0) != FALSE;
    if (verb == "text") return SetFieldText(window, rest);
    if (verb == "rows") return WaitUntil([&] { return ListHasRows(window, number); });
    if (verb == "size") return SizeWindow(window, rest);
    if (verb == "maximise") return Maximise(window, true);
    if (verb == "restore") return Maximise(window, false);
    if (verb == "picture") return WritePicture(window, PlaceOfWindow(window), rest);
    if (verb == "opened") return WaitUntil([&] { return std::ssize(OtherWindows(window)) >= number; });
    if (verb == "popups") return WritePopups(window, rest);
    if (verb == "cell") return ClickCell(window, rest);
    if (verb == "sort") {
        return Ask(FindVisibleChild(window, kTreeClass), kTreeClickHeader, static_cast<WPARAM>(number)) == 1;
    }
    if (verb == "key") {
        return ::PostMessageA(FindVisibleChild(window, kTreeClass), WM_KEYDOWN, static_cast<WPARAM>(number), 0) !=
               FALSE;
    }
    if (verb == "menu") return OpenListMenu(window);
    if (verb == "do") {
        const HWND list = FindVisibleChild(window, kTreeClass);
        return list != nullptr && ::PostMessageA(::GetParent(list), WM_COMMAND, static_cast<WPARAM>(number), 0);
    }
    if (verb == "leave") return LeaveMenu(window);
    if (verb == "close") return ::PostMessageA(window, WM_CLOSE, 0, 0) != FALSE;
    return verb == "wait";
}

bool DoStep(const std::string& step) {
    const auto first = step.find(':');
    if (first == std::string::npos) return false;
    const auto second = step.find(':', first + 1);
    const std::string verb = step.substr(0, first);
    const std::string name = step.substr(first + 1, second == std::string::npos ? second : second - first - 1);
    if (verb == "gone") return WaitUntil([&] { return VisibleWindow(name) == nullptr; });
    return WaitForWindow(name) &&
           Work(VisibleWindow(name), verb, second == std::string::npos ? "" : step.substr(second + 1));
}

}  // namespace
}  // namespace brennvar::test

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (!brennvar::test::DoStep(argv[i])) {
            std::fprintf(stderr, "demo_driver: not done: %s\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
