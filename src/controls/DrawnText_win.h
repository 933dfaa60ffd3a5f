// Texts that are only read and that are no windows: the window that shows them draws them in its ground. What a
// window costs at the start is the number of its child windows far more than what they paint, so only what takes
// input is one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Windows_win.h"
#include "controls/Label_win.h"
#include "ui/Accessible_win.h"
#include "ui/Look_win.h"
#include "ui/PicturePart_win.h"

namespace brennvar {

class CDrawnText;

// The texts of one window, in the order in which they were made. The window paints them and hands on
// kDrawnTextQuery. It outlives its texts.
class DrawnTexts final : public AccessibleParts {
public:
    // When a text changes, how its place comes to be painted.
    enum class PaintedIn { Ground, Paint };  // WM_ERASEBKGND and then WM_PAINT, or WM_PAINT alone

    explicit DrawnTexts(PaintedIn paintedIn) : m_paintedIn(paintedIn) {}
    DrawnTexts(const DrawnTexts&) = delete;
    DrawnTexts& operator=(const DrawnTexts&) = delete;

    // Before the first text. The window is borrowed.
    void SetWindow(HWND window) { m_window = window; }
    [[nodiscard]] HWND Window() const { return m_window; }
    // Those that the DC can show, in the window's client coordinates.
    void Paint(HDC dc) const;
    // A part of the window looks different now.
    void Repaint(const RECT& place) const;
    // For a picture that is kept: the window's ground, by its look, and each text, where it stands.
    void TellParts(PictureParts& parts, std::uint64_t ground) const;
    // kDrawnTextQuery; nothing for any other message.
    [[nodiscard]] std::optional<LRESULT> Answer(UINT message, WPARAM wParam, LPARAM lParam) const;
    [[nodiscard]] const std::vector<const CDrawnText*>& All() const { return m_texts; }

    [[nodiscard]] int PartCount() const override { return static_cast<int>(m_texts.size()); }
    void TellPart(int part, AccessibleThing& thing) const override;
    [[nodiscard]] int PartAt(POINT point) const override;
    // The text with the control's number, else the one that stands on the control's line right after it.
    [[nodiscard]] std::string LabelOf(HWND control) const override;

private:
    friend class CDrawnText;
    void Announce(const CDrawnText& text) const;

    const PaintedIn m_paintedIn;
    HWND m_window = nullptr;
    std::vector<const CDrawnText*> m_texts;
};

// One of them, over the window's ground. "&" in it is no mnemonic.
class CDrawnText {
public:
    CDrawnText() = default;
    CDrawnText(const CDrawnText&) = delete;
    CDrawnText& operator=(const CDrawnText&) = delete;
    virtual ~CDrawnText();

    // As CLabel::Create: the styles of a STATIC. Shown, of no size yet. The fonts of the look are borrowed. A text
    // that names a control of the same window has the control's number; -1: nobody asks for it.
    void Create(DrawnTexts& texts, const std::string& text, LabelKind kind, DWORD style, int id, const Look& look);
    [[nodiscard]] bool IsCreated() const { return m_texts != nullptr; }

    [[nodiscard]] int Id() const { return m_id; }
    [[nodiscard]] const std::string& Text() const { return m_text; }
    [[nodiscard]] HFONT Font() const { return m_font; }
    // Paints anew only when the text differs.
    void SetText(const std::string& text);
    // Another colour than the kind's.
    void SetColour(COLORREF colour);
    // In the window's client coordinates.
    void Place(const RECT& place);
    [[nodiscard]] const RECT& Place() const { return m_place; }
    void SetShown(bool isShown);
    [[nodiscard]] bool IsShown() const { return m_isShown; }
    // For a picture that is kept: what is painted at the place.
    [[nodiscard]] PicturePart Part() const { return {m_isShown ? m_place : RECT{}, m_look}; }
    // The size of the text as it stands, broken into lines of at most this width (0: not broken). Pixels of the
    // screen.
    [[nodiscard]] SIZE Measure(int width) const;

    // Nothing but its place is painted on.
    virtual void Paint(HDC dc) const;

protected:
    [[nodiscard]] bool IsSeenOn(HDC dc) const { return m_isShown && ::RectVisible(dc, &m_place) != FALSE; }
    void PaintText(HDC dc, const RECT& place) const;
    void Repaint();

private:
    DrawnTexts* m_texts = nullptr;
    int m_id = -1;
    std::string m_text;
    RECT m_place{};
    HFONT m_font = nullptr;
    COLORREF m_colour = 0;
    UINT m_format = 0;
    bool m_isShown = true;
    std::uint64_t m_look = NextLook();
};

}  // namespace brennvar
