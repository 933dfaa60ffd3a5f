// Reads a text that a window draws itself, as automation does.
#pragma once

#include <optional>
#include <string>

#include "controls/DrawnTextQuery_win.h"

namespace brennvar::test {

// Nothing: the window has no text of this number. ask: how the message is sent.
inline std::optional<std::string> DrawnText(HWND window, int id,
                                            LRESULT (*ask)(HWND, UINT, WPARAM, LPARAM) = &::SendMessageA) {
    std::string text;
    for (;;) {
        const auto answer = static_cast<std::uint64_t>(
            ask(window, kDrawnTextQuery, static_cast<WPARAM>(id), static_cast<LPARAM>(text.size())));
        if ((answer & ~0xFFFFFFFFULL) != kDrawnTextIsThere) return std::nullopt;
        for (std::size_t index = 0; index < kDrawnTextPiece; ++index) {
            const char next = static_cast<char>(answer >> (8 * index) & 0xFF);
            if (next == '\0') return text;
            text += next;
        }
    }
}

}  // namespace brennvar::test
