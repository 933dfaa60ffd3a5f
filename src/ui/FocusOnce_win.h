// Who has the keyboard, asked once for many windows: Windows keeps it where asking takes a while.
#pragma once

#include <utility>

#include "base/Windows_win.h"

namespace brennvar {

// While it lasts, the focus must not move. Of one thread.
class FocusOnce {
public:
    FocusOnce() : m_focus(::GetFocus()), m_outer(std::exchange(s_innermost, this)) {}
    FocusOnce(const FocusOnce&) = delete;
    FocusOnce& operator=(const FocusOnce&) = delete;
    ~FocusOnce() { s_innermost = m_outer; }
    // Also where nobody has asked before.
    [[nodiscard]] static HWND Window() { return s_innermost ? s_innermost->m_focus : ::GetFocus(); }

private:
    static inline thread_local FocusOnce* s_innermost = nullptr;
    HWND m_focus;
    FocusOnce* m_outer;
};

}  // namespace brennvar
