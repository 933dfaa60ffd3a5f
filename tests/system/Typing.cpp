#include "Typing.h"

#include <stdexcept>
#include <vector>

namespace brennvar::test {

void Type(std::initializer_list<WORD> keys, WORD modifier) {
    std::vector<INPUT> inputs;
    const auto add = [&](WORD key, DWORD flags) {
        // The cursor block, not the number pad.
        const bool isCursorKey = (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_APPS || key == VK_DELETE;
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags | (isCursorKey ? KEYEVENTF_EXTENDEDKEY : 0U);
        inputs.push_back(input);
    };
    if (modifier != 0) add(modifier, 0);
    for (const WORD key : keys) {
        add(key, 0);
        add(key, KEYEVENTF_KEYUP);
    }
    if (modifier != 0) add(modifier, KEYEVENTF_KEYUP);
    if (::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) != inputs.size()) {
        throw std::runtime_error("keys cannot be typed");
    }
}

HWND FocusOf(HWND window) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    return ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &state) ? state.hwndFocus : nullptr;
}

}  // namespace brennvar::test
