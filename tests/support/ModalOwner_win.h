// A window whose handlers run between the messages of a modal loop: what a test does while a dialog or a menu is
// open.
#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "base/Windows_win.h"
#include "ui/OwnMessages_win.h"

namespace brennvar::test {

class ModalOwner {
public:
    ModalOwner() {
        m_window = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 100, 100, 400, 300, nullptr, nullptr,
                                     ::GetModuleHandleA(nullptr), nullptr);
        ::SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        ::SetWindowLongPtrA(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ModalOwner::Procedure));
    }
    ModalOwner(const ModalOwner&) = delete;
    ModalOwner& operator=(const ModalOwner&) = delete;
    ~ModalOwner() { EndWindow(m_window); }

    [[nodiscard]] HWND Window() const { return m_window; }
    // Runs the step when the steps before it, and what they have posted to this thread, have been dealt with.
    void Post(std::function<void()> step) {
        m_steps.push_back(std::move(step));
        PostNext();
    }
    // Presses a key in the window that has the focus then.
    void PostKey(WPARAM key) {
        Post([key] { ::PostMessageA(::GetFocus(), WM_KEYDOWN, key, 0); });
    }
    // Alt and a letter, likewise.
    void PostMnemonic(char letter) {
        Post([letter] { ::PostMessageA(::GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1L << 29); });
    }

private:
    static constexpr UINT kStep = WM_APP + 1;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != kStep) return ::DefWindowProcA(window, message, wParam, lParam);
        auto* owner = reinterpret_cast<ModalOwner*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
        const std::function<void()> step = std::move(owner->m_steps.front());
        owner->m_steps.pop_front();
        owner->m_isPosted = false;  // a step may open a dialog, in whose loop the next ones run
        step();
        owner->PostNext();
        return 0;
    }
    void PostNext() {
        if (m_steps.empty() || std::exchange(m_isPosted, true)) return;
        ::PostMessageA(m_window, kStep, 0, 0);
    }

    HWND m_window = nullptr;
    std::deque<std::function<void()>> m_steps;
    bool m_isPosted = false;  // the next one
};

}  // namespace brennvar::test
