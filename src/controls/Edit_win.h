// Fields to type into, of one line or several.
#pragma once

#include <string>

#include "controls/FieldFrame_win.h"
#include "ui/Control_win.h"

namespace brennvar {

// An EDIT: everything about its text is Windows' own (ES_NUMBER, EM_LIMITTEXT, undo, its menu). Ours are the frame,
// which stands outside the client area, the colours, and the text of a single line in the middle of the height. The
// parent gets EN_CHANGE and its like.
class CEdit : public CControl {
public:
    // style: ES_ flags, for several lines ES_MULTILINE and WS_VSCROLL as well; Tab reaches it. Made visible, of no
    // size yet; FieldHeight() suits one line.
    void Create(HWND parent, const std::string& text, DWORD style, int id, const Look& look);
    // Takes over an edit field of a dialog template; its border goes.
    void Adopt(HWND control, const Look& look);

    // A quiet text that says what belongs here, shown while a field of one line is empty. It is no part of the
    // window text.
    void SetCue(const std::string& cue);
    void TellAccessible(AccessibleThing& thing) const override;

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Room beside the text of a single line, inside of the frame, in pixels of the screen, and what is painted
    // there. It is painted anew when the field becomes empty, and when it is no longer.
    [[nodiscard]] virtual int RoomBefore() const { return 0; }
    [[nodiscard]] virtual int RoomBehind() const { return 0; }
    // field: what the frame encloses, in the DC's coordinates.
    virtual void PaintRooms(HDC /*dc*/, const RECT& /*field*/) const {}
    [[nodiscard]] const Palette& Colours() const { return m_colours; }
    [[nodiscard]] bool IsEmpty() const { return ::GetWindowTextLengthA(Window()) == 0; }

private:
    void SetUp(const Look& look);
    [[nodiscard]] bool PaintsAll() const override { return false; }
    std::optional<LRESULT> OnReflected(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnCalculateSize(WPARAM wParam, RECT& place);
    LRESULT OnPaintFrame(WPARAM wParam, LPARAM lParam);
    // Around the client area, in a DC whose origin is the window's corner.
    void PaintFrame(HDC dc) const;
    LRESULT OnTextMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void PaintCue(HDC dc) const;
    [[nodiscard]] bool ShowsCue() const;
    [[nodiscard]] bool HasLines() const { return (Style() & ES_MULTILINE) != 0; }
    [[nodiscard]] FieldState GroundState() const;

    Palette m_colours;
    std::string m_cue;
    int m_lineHeight = 0;
};

}  // namespace brennvar
