// Bars that show how far something has come.
#pragma once

#include "ui/Control_win.h"

namespace brennvar {

// A msctls_progress32: range, position and steps are set with PBM_ messages.
class CProgressBar final : public CControl {
public:
    // Makes it, visible, of no size yet, with the range 0 to 100.
    void Create(HWND parent, int id, const Look& look);
    // Takes over a progress bar of a dialog template; its border goes.
    void Adopt(HWND control, const Look& look);

    // Within the range.
    void SetPosition(int position) const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void SetUp(const Look& look);
    void OnPaint(HDC dc, const RECT& client) override;
    [[nodiscard]] bool IsHarmless(UINT message) const override;

    Palette m_colours;
};

}  // namespace brennvar
