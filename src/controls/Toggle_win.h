// What check boxes and radio buttons have in common: a picture of six states (rest, hot, pressed, and the same
// checked) and beside it a text of one or more lines.
#pragma once

#include <string>

#include "ui/Control_win.h"
#include "ui/SkinImage_win.h"
#include "ui/Touch.h"

namespace brennvar {

class CToggle : public CControl {
public:
    [[nodiscard]] bool IsChecked() const;
    // As BM_SETCHECK: tells the parent nothing. A radio button's neighbours are left as they are.
    void SetChecked(bool checked) const;
    // The height that picture and text need at this width. Pixels of the screen.
    [[nodiscard]] int HeightAt(int width) const;
    // Of picture and text in one line.
    [[nodiscard]] int FullWidth() const;
    void TellAccessible(AccessibleThing& thing) const override;

protected:
    struct Kind {
        const char* imageKey;
        const char* defaultFile;
        bool isRound;  // without a picture
    };
    void Resolve(const Kind& kind, const Look& look);

private:
    struct Layout {
        RECT picture;
        RECT text;
    };
    [[nodiscard]] Layout LayOut(HDC dc, const RECT& client) const;
    [[nodiscard]] SIZE PictureSize() const;
    void OnPaint(HDC dc, const RECT& client) override;
    void PaintPlain(HDC dc, const RECT& place, Touch touch) const;

    CSkinImage m_image;
    Palette m_colours;
    bool m_isRound = false;
};

}  // namespace brennvar
