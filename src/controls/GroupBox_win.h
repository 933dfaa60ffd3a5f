// Frames with a title around controls that belong together.
#pragma once

#include <string>

#include "ui/Control_win.h"

namespace brennvar {

// A BUTTON with BS_GROUPBOX. Within it it shows the parent's ground, and leaves out the controls that stand there.
class CGroupBox final : public CControl {
public:
    // Makes it, visible, of no size yet. WS_GROUP: the radio buttons before it end there.
    void Create(HWND parent, const std::string& text, int id, const Look& look);
    // Takes over a group box of a dialog template.
    void Adopt(HWND control, const Look& look);

    // Where its controls may stand: below the title and inside the frame, in the parent's coordinates.
    [[nodiscard]] RECT Inside() const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void SetUp(const Look& look);
    [[nodiscard]] bool PaintsAll() const override { return false; }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPaint(HDC dc, const RECT& client) override;
    void OnPaintMessage();
    void ExcludeNeighbours(HDC dc) const;
    void PaintLines(HDC dc, const RECT& client) const;

    Palette m_colours;
    int m_titleHeight = 0;
};

}  // namespace brennvar
