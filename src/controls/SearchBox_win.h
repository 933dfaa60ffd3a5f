// The field that looks for a text in what a page shows.
#pragma once

#include "controls/Edit_win.h"

namespace brennvar {

// A field of one line with a magnifier before its text and, while it holds one, a cross behind it: a click on the
// cross, or Escape, empties the field. The parent gets EN_CHANGE for that as for every other change.
class CSearchBox final : public CEdit {
private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] int RoomBefore() const override;
    [[nodiscard]] int RoomBehind() const override;
    void PaintRooms(HDC dc, const RECT& field) const override;
    // A point of a mouse message, which may lie in the rooms beside the client area.
    [[nodiscard]] bool IsOnCross(LPARAM point) const;
    [[nodiscard]] bool IsOnText(POINT point) const;
};

}  // namespace brennvar
