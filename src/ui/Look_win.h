// What a window needs to look like the rest: the skin as it was when the window was made, the colours that every
// control uses, and the fonts.
#pragma once

#include "base/Windows_win.h"
#include "config/Skin.h"
#include "ui/Fonts_win.h"

namespace brennvar {

// The defaults are those of the light skin, so that a skin without these keys looks right; on the bands, which are
// plain without pictures, they read on the page's ground.
struct Palette {
    // The defaults, for a control that has not been made yet.
    Palette();
    explicit Palette(const Skin& skin);

    COLORREF frame1;         // COLOR_FRAME_1: outer frames
    COLORREF frame2;         // COLOR_FRAME_2: inner frames, hairlines
    COLORREF accent;         // COLOR_FRAME_3: the control with the focus, progress
    COLORREF text;           // COLOR_TEXT
    COLORREF quietText;      // COLOR_TEXT_QUIET
    COLORREF page;           // COLOR_PAGE: the ground of pages and dialogs
    COLORREF list;           // COLOR_LIST: the ground of lists, fields and cards
    COLORREF listAlternate;  // COLOR_LIST_ALTERNATE: every other row
    COLORREF selection;      // COLOR_SELECTION: the ground of a selected row
    COLORREF warning;        // COLOR_WARNING: what is wrong with a field, beside it
    COLORREF button;         // COLOR_BUTTON: the ground of buttons that are not the first choice
    COLORREF danger;         // COLOR_DANGER: the word on a button that destroys
    COLORREF fieldFrame;     // COLOR_FIELD_FRAME: around fields and boxes to tick, 3:1 against both grounds
    COLORREF captionText;    // COLOR_CAPTION_TEXT: on the band at the top of a window
    COLORREF statusText;     // COLOR_STATUS_TEXT: on the band at the bottom of the control center
};

// Made anew for every dialog, so that a new skin shows from the next one on. Borrows the fonts.
struct Look {
    explicit Look(const CFonts& fonts);
    Look(const CFonts& fonts, Skin ownSkin);

    Skin skin;
    Palette colours;
    const CFonts& fonts;
};

}  // namespace brennvar
