#include "controls/IpAddressBox_win.h"

// windows.h must stand before commctrl.h.
#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kDotGap = 6;  // between two numbers
constexpr int kDotSide = 2;

}  // namespace

void CIpAddressBox::Create(HWND parent, int id, const Look& look) {
    RequireWindowClasses(ICC_INTERNET_CLASSES);
    Make(parent, WC_IPADDRESSA, "", WS_TABSTOP, id, look.fonts.Text());
    SetUp(look);
}

void CIpAddressBox::Adopt(HWND control, const Look& look) {
    Attach(control, look.fonts.Text());
    SetUp(look);
}

void CIpAddressBox::SetUp(const Look& look) {
    m_colours = look.colours;
    m_lineHeight = MeasureText(look.fonts.Text(), "0", 0).cy;
    std::size_t count = 0;
    for (HWND field = ::GetWindow(Window(), GW_CHILD); field && count < m_fields.size();
         field = ::GetWindow(field, GW_HWNDNEXT)) {
        m_fields[count++] = field;
        SetControlFont(field, look.fonts.Text());
    }
    // Windows stacks them in an order of its own; where they stand tells which is which.
    const auto left = [](HWND field) {
        RECT place{};
        ::GetWindowRect(field, &place);
        return place.left;
    };
    std::stable_sort(m_fields.begin(), m_fields.end(), [&](HWND a, HWND b) { return left(a) < left(b); });
    ::SetWindowLongPtrA(Window(), GWL_STYLE, static_cast<LONG_PTR>(Style() | WS_CLIPCHILDREN));
    RemoveBorder(Window());
    LayOutFields();
}

std::uint32_t CIpAddressBox::Address() const {
    DWORD address = 0;
    CallWindows(IPM_GETADDRESS, 0, reinterpret_cast<LPARAM>(&address));
    return address;
}

void CIpAddressBox::SetAddress(std::uint32_t address) const {
    CallWindows(IPM_SETADDRESS, 0, static_cast<LPARAM>(address));
}

bool CIpAddressBox::IsBlank() const {
    return CallWindows(IPM_ISBLANK, 0, 0) != 0;
}

void CIpAddressBox::Clear() const {
    CallWindows(IPM_CLEARADDRESS, 0, 0);
}

void CIpAddressBox::LayOutFields() const {
    const RECT client = ClientRect();
    const int gap = Scale(kDotGap);
    const int edge = kFieldFrame + FieldPadding();
    const int count = static_cast<int>(m_fields.size());
    const int room = std::max(0, WidthOf(client) - 2 * edge - (count - 1) * gap);
    const int width = room / count;
    const int top = (HeightOf(client) - m_lineHeight) / 2;
    int left = edge;
    for (const HWND field : m_fields) {
        ::SetWindowPos(field, nullptr, left, top, width, m_lineHeight, SWP_NOZORDER | SWP_NOACTIVATE);
        left += width + gap;
    }
}

void CIpAddressBox::FocusFieldAt(int x) const {
    for (const HWND field : m_fields) {
        RECT place{};
        ::GetWindowRect(field, &place);
        ::MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&place), 2);
        if (x < place.right + Scale(kDotGap) || field == m_fields.back()) {
            ::SetFocus(field);
            return;
        }
    }
}

bool CIpAddressBox::HasFieldFocus() const {
    const HWND focus = ::GetFocus();
    return focus && (focus == Window() || ::GetParent(focus) == Window());
}

FieldState CIpAddressBox::State() const {
    if (!IsEnabled()) return FieldState::Disabled;
    return HasFieldFocus() ? FieldState::Focused : FieldState::Rest;
}

void CIpAddressBox::OnPaint(HDC dc, const RECT& client) {
    const FieldState state = State();
    FillSolid(dc, client, FieldGround(m_colours, state));
    DrawFieldFrame(dc, client, m_colours, state);
    const COLORREF colour = IsEnabled() ? m_colours.quietText : FieldText(m_colours, state);
    const int gap = Scale(kDotGap);
    for (std::size_t i = 0; i + 1 < m_fields.size(); ++i) {
        RECT field{};
        ::GetWindowRect(m_fields[i], &field);
        ::MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&field), 2);
        const LONG left = field.right + (gap - kDotSide) / 2;
        // About where letters end: a quarter of the line lies below them.
        const LONG bottom = field.bottom - m_lineHeight / 4;
        FillSolid(dc, {left, bottom - kDotSide, left + kDotSide, bottom}, colour);
    }
}

std::optional<LRESULT> CIpAddressBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC: return AnswerFieldColours(reinterpret_cast<HDC>(wParam), m_colours, State());
        case WM_SIZE: {
            const LRESULT result = CallWindows(message, wParam, lParam);
            LayOutFields();
            Repaint();
            return result;
        }
        // Comes with every key, and shows nothing: the numbers need not be painted anew.
        case WM_SETTEXT: return CallWindows(message, wParam, lParam);
        case WM_LBUTTONDOWN: FocusFieldAt(GET_X_LPARAM(lParam)); return 0;
        case WM_COMMAND:  // of a field: the focus may have come or gone
        case WM_ENABLE: {
            const HWND window = Window();
            const LRESULT result = CallWindows(message, wParam, lParam);
            const UINT children = message == WM_ENABLE ? RDW_ALLCHILDREN : RDW_NOCHILDREN;
            if (::IsWindow(window)) {
                ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | children);
            }
            return result;
        }
        default: return std::nullopt;
    }
}

void CIpAddressBox::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::IpAddress;
    thing.value = Text();
    NameByLabel(Window(), thing);
}

}  // namespace brennvar
