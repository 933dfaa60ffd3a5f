// A child window for more controls than fit: they scroll behind it, with the skin's scroll bar at the right where
// one is needed, by bar, wheel, and Tab to a control that is out of sight. Its controls' messages go on to its
// parent.
#pragma once

#include <optional>

#include "controls/DrawnText_win.h"
#include "controls/ScrollBar_win.h"
#include "controls/WheelSteps.h"
#include "ui/Look_win.h"
#include "ui/Window_win.h"

namespace brennvar {

class CScrollPanel : public CWindow {
public:
    // The look is borrowed for the life of the panel, which is created hidden, of no size yet.
    explicit CScrollPanel(const Look& look) : m_look(look), m_pictures(look.skin) {}
    [[nodiscard]] bool CreatePanel(HWND parent, int id);
    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &m_drawn; }

protected:
    // Places the controls in this width, with the upper edge of the content at top, which is 0 or less. Returns the
    // height of the content. Pixels of the screen.
    virtual int OnPlaceContent(int width, int top) = 0;
    [[nodiscard]] const Look& GetLook() const { return m_look; }
    // What is written between the controls; placed with them.
    [[nodiscard]] DrawnTexts& Texts() { return m_drawn; }

    void OnSize(int width, int height) final;
    void OnPaint(HDC dc, const RECT& invalid) final;
    void OnMouseMove(POINT point, UINT keys) final;
    void OnMouseLeave() final;
    void OnLeftDown(POINT point, UINT keys) final;
    void OnLeftUp(POINT point, UINT keys) final;
    void OnDoubleClick(POINT point, UINT keys) final { OnLeftDown(point, keys); }
    void OnCaptureLost() final;
    void OnTimer(UINT_PTR id) final;
    void OnWheel(int delta, bool isHorizontal) final;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) final;

private:
    void ScrollTo(int position);
    void ScrollToControl(HWND control);

    const Look& m_look;
    const ScrollPictures m_pictures;
    DrawnTexts m_drawn{DrawnTexts::PaintedIn::Paint};
    CScrollBar m_bar{true};
    WheelSteps m_wheel;
    POINT m_mouse{};
};

}  // namespace brennvar
