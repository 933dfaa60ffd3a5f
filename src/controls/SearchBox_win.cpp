#include "controls/SearchBox_win.h"

#include <windowsx.h>

#include "ui/ActionMark_win.h"
#include "ui/LineIcons_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch: the side of both pictures, and from the frame to each.
constexpr int kPicture = 16;
constexpr int kBeside = 4;

RECT PictureAt(LONG left, const RECT& field) {
    const LONG side = Scale(kPicture);
    const LONG top = field.top + (HeightOf(field) - side) / 2;
    return {left, top, left + side, top + side};
}

}  // namespace

int CSearchBox::RoomBefore() const {
    return Scale(kPicture + kBeside) - FieldPadding() + Scale(kBeside);
}

int CSearchBox::RoomBehind() const {
    return RoomBefore();
}

void CSearchBox::PaintRooms(HDC dc, const RECT& field) const {
    DrawMagnifier(dc, PictureAt(field.left + Scale(kBeside), field), Colours().quietText);
    if (IsEmpty()) return;
    DrawClosingCross(dc, PictureAt(field.right - Scale(kBeside + kPicture), field), Colours().quietText);
}

bool CSearchBox::IsOnCross(LPARAM point) const {
    return !IsEmpty() && GET_X_LPARAM(point) >= ClientRect().right;
}

bool CSearchBox::IsOnText(POINT point) const {
    const RECT client = ClientRect();
    return point.x >= client.left && point.x < client.right;
}

std::optional<LRESULT> CSearchBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            // Else the window takes Escape for its own.
            if (wParam != VK_ESCAPE || IsEmpty()) return std::nullopt;
            return CallWindows(message, wParam, lParam) | DLGC_WANTMESSAGE;
        case WM_KEYDOWN:
            if (wParam != VK_ESCAPE || IsEmpty()) break;
            SetText("");
            return 0;
        case WM_CHAR:
            if (wParam != VK_ESCAPE) break;
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            if (!IsOnCross(lParam)) break;
            ::SetFocus(Window());
            SetText("");
            return 0;
        case WM_SETCURSOR: {
            POINT point{};
            ::GetCursorPos(&point);
            ::ScreenToClient(Window(), &point);
            if (IsOnText(point)) return std::nullopt;
            ::SetCursor(::LoadCursorA(nullptr, IDC_ARROW));
            return TRUE;
        }
        default: break;
    }
    return CEdit::OnMessage(message, wParam, lParam);
}

}  // namespace brennvar
