// A dialog in the skin: a caption band with icon, caption and close button, and the ground of the skin's picture.
// Windows paints no part of it; its window text is still the caption, for automation and screen readers. Without
// the picture the ground is plain.
//
// Its template has the style WS_POPUP | WS_SYSMENU | WS_CLIPCHILDREN and no WS_CAPTION.
#pragma once

#include <optional>
#include <string>

#include "base/Handles_win.h"
#include "controls/Button_win.h"
#include "ui/Dialog_win.h"
#include "ui/Look_win.h"
#include "ui/SkinImage_win.h"

namespace brennvar {

class CSkinDialog : public CDialog {
public:
    // The fonts are borrowed for the life of the dialog.
    explicit CSkinDialog(const CFonts& fonts) : m_fonts(fonts) {}

    // The skin as it was when the window was made; only from OnCreateContent on.
    [[nodiscard]] const Look& GetLook() const { return *m_look; }

protected:
    // Called once, when the window and the controls of the template exist. It lays the content out and calls
    // SetContentPixels.
    virtual void OnCreateContent() {}
    // The size of the content, below the band and inside the margins, in pixels of the screen; sizes and places the
    // window.
    void SetContentPixels(SIZE size);
    // The place of the content in the client area; its corner is right before the size is known as well.
    [[nodiscard]] RECT ContentRect() const;
    // Where a window of this size opens: in the middle of its owner, on the owner's screen. It is moved into the
    // work area afterwards.
    [[nodiscard]] virtual RECT OpeningPlace(SIZE size) const;

    // Paints what stands behind the controls, over the skin's ground; client coordinates. What it paints is kept.
    virtual void OnPaintGround(HDC) {}
    // From now on no text of the window and its controls changes any more: what the user is asked, no other program
    // rewrites.
    void KeepTexts();
    // OnPaintGround has something else to paint.
    void RepaintGround();

    // An override of one of these calls it as well.
    void OnInitDialog() override;
    bool OnEraseBackground(HDC dc) override;
    void OnSize(int width, int height) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    [[nodiscard]] RECT Client() const;
    [[nodiscard]] LRESULT HitTest(POINT screen) const;
    void ShowSystemMenu() const;
    void PaintSkin(HDC dc);
    void PaintCaption(HDC dc);

    const CFonts& m_fonts;
    std::optional<Look> m_look;
    CSkinImage m_picture;
    UniqueIcon m_icon;
    CButton m_close;
    bool m_keepsTexts = false;
    // The ground as it was painted last, since every control asks for it; empty when it has to be painted.
    UniqueBitmap m_ground;
};

}  // namespace brennvar
