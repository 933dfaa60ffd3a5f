// Lines of text in letters of one width, to be read, selected and copied: a frame with a field of Windows' own that
// is only read, and the skin's scroll bar.
#pragma once

#include <optional>
#include <string>

#include "controls/ScrollBar_win.h"
#include "controls/WheelSteps.h"
#include "ui/Control_win.h"
#include "ui/Look_win.h"
#include "ui/Window_win.h"

namespace brennvar {

class CTextArea final : public CWindow {
public:
    // The look is borrowed for the life of the window.
    explicit CTextArea(const Look& look) : m_look(look), m_pictures(look.skin) {}
    // Visible, of no size yet. Tab reaches the field inside, which is its only child.
    [[nodiscard]] bool CreateArea(HWND parent, int id);

    // Lines end in "\r\n". What is selected and what is seen stay where they were, if the text goes so far.
    void Show(const std::string& text);
    // So many lines at once, frame included. Pixels of the screen.
    [[nodiscard]] int HeightOfLines(int count) const;
    // So many letters in a line, frame and scroll bar included.
    [[nodiscard]] int WidthOfLetters(int count) const;

private:
    // The field. Tells its parent of everything that may have scrolled it, as EN_VSCROLL.
    class Lines final : public CControl {
    public:
        void Create(HWND parent, const Look& look);
        void Show(const std::string& text);
        [[nodiscard]] int LineCount();
        [[nodiscard]] int FirstLine();
        void ScrollBy(int lines);
        void TellAccessible(AccessibleThing& thing) const override;

    private:
        [[nodiscard]] bool PaintsAll() const override { return false; }
        std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
        std::optional<LRESULT> OnReflected(UINT message, WPARAM wParam, LPARAM lParam) override;
        Palette m_colours;
    };

    bool OnCreate() override;
    void OnSize(int width, int height) override;
    void OnPaint(HDC dc, const RECT& invalid) override;
    void OnCommand(int id, int notification) override;
    void OnMouseMove(POINT point, UINT keys) override;
    void OnMouseLeave() override;
    void OnLeftDown(POINT point, UINT keys) override;
    void OnLeftUp(POINT point, UINT keys) override;
    void OnDoubleClick(POINT point, UINT keys) override { OnLeftDown(point, keys); }
    void OnCaptureLost() override;
    void OnTimer(UINT_PTR id) override;
    void OnWheel(int delta, bool isHorizontal) override;

    void PlaceParts();
    void ShowRange();
    void ScrollTo(int line);

    const Look& m_look;
    const ScrollPictures m_pictures;
    CScrollBar m_bar{true};
    WheelSteps m_wheel;
    Lines m_lines;
    SIZE m_letter{};
    POINT m_mouse{};
};

}  // namespace brennvar
