// Works the program's windows from a script, step by step: demo_driver STEP...
//   wait:CAPTION          until a visible window with this caption is there and answers
//   gone:CAPTION          until it is not
//   command:CAPTION:N     sends the window the command N, as a menu or a page button does
//   enabled:CAPTION:ID    until the control ID of the window is enabled
//   press:CAPTION:ID      presses the button ID of the window as soon as it is enabled
//   rows:CAPTION:N        until a list of the window shows at least N rows
// Exit code 0 when all steps were done, 1 at the first one that was not.
#include "Desktop.h"
#include "Programs.h"
#include "ui/TreeMessages.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace brennvar::test {
namespace {

HWND VisibleWindow(const std::string& caption) {
    const HWND window = ::FindWindowA(nullptr, caption.c_str());
    return window != nullptr && ::IsWindowVisible(window) ? window : nullptr;
}

bool WaitForWindow(const std::string& caption) {
    return WaitUntil([&] { return VisibleWindow(caption) != nullptr; }) &&
           AnswerTime(VisibleWindow(caption), kPatience) < kPatience;
}

bool ListHasRows(const std::string& caption, int rows) {
    const HWND list = FindVisibleChild(VisibleWindow(caption), kTreeClass);
    return list != nullptr && ListRowCount(list) >= rows;
}

bool DoStep(const std::string& step) {
    const auto first = step.find(':');
    if (first == std::string::npos) return false;
    const auto second = step.find(':', first + 1);
    const std::string verb = step.substr(0, first);
    const std::string caption = step.substr(first + 1, second == std::string::npos ? second : second - first - 1);
    const int number = second == std::string::npos ? 0 : std::atoi(step.c_str() + second + 1);
    if (verb == "wait") return WaitForWindow(caption);
    if (verb == "gone") return WaitUntil([&] { return VisibleWindow(caption) == nullptr; });
    if (verb == "command") {
        return WaitForWindow(caption) &&
               ::PostMessageA(VisibleWindow(caption), WM_COMMAND, static_cast<WPARAM>(number), 0) &&
               AnswerTime(VisibleWindow(caption), kPatience) < kPatience;
    }
    if (verb == "enabled") {
        return WaitForWindow(caption) &&
               WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(VisibleWindow(caption), number)) != FALSE; });
    }
    if (verb == "press") return WaitForWindow(caption) && PressWhenEnabled(VisibleWindow(caption), number);
    if (verb == "rows") return WaitUntil([&] { return ListHasRows(caption, number); });
    return false;
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
