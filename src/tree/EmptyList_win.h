// What a list shows while it has no rows: a picture, why there are none, and what can be done about it by a click.
#pragma once

#include <cstdint>
#include <string>

#include "base/Windows_win.h"
#include "ui/Look_win.h"

namespace brennvar {

enum class EmptyPicture : std::uint8_t {
    None,
    Tray,       // nothing is here
    Magnifier,  // there is something, but not what is searched for
};

struct EmptyNote {
    std::string text{};
    EmptyPicture picture = EmptyPicture::Tray;
    std::string action{};  // TreeEvents::emptyAction, as a link; empty: there is none
    friend bool operator==(const EmptyNote&, const EmptyNote&) = default;
};

// Of a list's rows, whose font must be selected; nothing without a text.
void PaintEmptyNote(HDC dc, const RECT& rows, const EmptyNote& note, const Palette& colours);
// Where its action is painted; empty: it has none, or no room for it.
[[nodiscard]] RECT PlaceOfEmptyAction(HFONT font, const RECT& rows, const EmptyNote& note);

}  // namespace brennvar
