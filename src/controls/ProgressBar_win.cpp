#include "controls/ProgressBar_win.h"

// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include <algorithm>
#include <cstdint>

#include "controls/FieldFrame_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {

void CProgressBar::Create(HWND parent, int id, const Look& look) {
    RequireWindowClasses(ICC_PROGRESS_CLASS);
    Make(parent, PROGRESS_CLASSA, "", 0, id, look.fonts.Text());
    SetUp(look);
}

void CProgressBar::Adopt(HWND control, const Look& look) {
    Attach(control, look.fonts.Text());
    SetUp(look);
}

void CProgressBar::SetUp(const Look& look) {
    m_colours = look.colours;
    RemoveBorder(Window());
}

void CProgressBar::SetPosition(int position) const {
    CallWindows(PBM_SETPOS, static_cast<WPARAM>(position), 0);
}

bool CProgressBar::IsHarmless(UINT message) const {
    return message == PBM_GETPOS;
}

void CProgressBar::OnPaint(HDC dc, const RECT& client) {
    FillSolid(dc, client, FieldGround(m_colours, FieldState::Rest));
    DrawFieldFrame(dc, client, m_colours, FieldState::Rest);
    PBRANGE range{};
    CallWindows(PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
    const auto position = static_cast<std::int64_t>(static_cast<int>(CallWindows(PBM_GETPOS, 0, 0)));
    const std::int64_t length = static_cast<std::int64_t>(range.iHigh) - range.iLow;
    if (length <= 0) return;
    RECT done = Inset(client, kFieldFrame);
    const std::int64_t share = std::clamp<std::int64_t>(position - range.iLow, 0, length);
    done.right = done.left + static_cast<LONG>(std::max(0, WidthOf(done)) * share / length);
    FillSolid(dc, done, m_colours.accent);
}

void CProgressBar::TellAccessible(AccessibleThing& thing) const {
    PBRANGE range{};
    CallWindows(PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
    const auto position = static_cast<int>(CallWindows(PBM_GETPOS, 0, 0));
    const int size = range.iHigh - range.iLow;
    thing.role = AccessibleRole::ProgressBar;
    thing.Set(STATE_SYSTEM_READONLY, true);
    if (size > 0) thing.value = std::to_string(::MulDiv(position - range.iLow, 100, size)) + "%";
    NameByLabel(Window(), thing);
}

}  // namespace brennvar
