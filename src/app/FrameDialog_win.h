// The main window as a window: skinned border and caption, page buttons, the shown page, moving, sizing by the
// grip, and the place that is remembered. What the window is about is the derived dialog's affair.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/PageHost_win.h"
#include "app/ResizeGrip_win.h"
#include "app/WindowFrame_win.h"
#include "config/Language.h"
#include "config/UserValues.h"
#include "controls/DrawnText_win.h"
#include "ui/Dialog_win.h"
#include "ui/Fonts_win.h"
#include "ui/KeptPicture_win.h"
#include "ui/Look_win.h"

namespace brennvar {

class FrameDialog : public CDialog {
protected:
    // Borrowed for the life of the window.
    FrameDialog(const CFonts& fonts, const Language& language, UserValues& userValues);

    // For OnInitDialog: reads the skin, makes caption and page buttons. The window gets the caption's text.
    void CreateFrame(const std::string& caption, std::vector<PageHost::Entry> entries);
    // For the end of OnInitDialog: the remembered place, or the middle of the main screen.
    void RestorePlace();
    // The window's own buttons; true for a command of theirs.
    bool OnFrameCommand(int command);
    void TickGrip() { m_grip.Tick(Window()); }
    // Back from the notification area or the task bar, and to the front.
    void RestoreWindow();

    // Neither minimised nor in the notification area.
    [[nodiscard]] bool IsSeen() const { return ::IsWindowVisible(Window()) && !::IsIconic(Window()); }
    [[nodiscard]] PageHost& Pages() { return m_pages; }
    [[nodiscard]] const Look& GetLook() const { return *m_look; }
    // What the window writes on its frame.
    [[nodiscard]] DrawnTexts& Texts() { return m_drawn; }

    virtual void OnPlaceStatus(const RECT& /*band*/) {}
    virtual void OnHelp() {}
    // The user minimises the window, by its button or by Windows' own menu.
    virtual void OnMinimise() { ::ShowWindow(Window(), SW_MINIMIZE); }

    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &m_drawn; }
    void OnDestroy() override;
    void OnSize(int width, int height) final;
    void OnMinMaxInfo(MINMAXINFO& info) final;
    bool OnEraseBackground(HDC dc) final;
    [[nodiscard]] bool TellParts(PictureParts& parts) const final;
    [[nodiscard]] KeptPicture* PictureToKeep() final { return &m_picture; }
    // To be asked by a derived OnMessage for what it does not handle.
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnLoopMessage(const MSG& message) final;

private:
    [[nodiscard]] std::optional<LRESULT> HitTest(POINT screenPoint) const;

    const CFonts& m_fonts;
    const Language& m_language;
    UserValues& m_userValues;
    std::optional<Look> m_look;
    std::optional<WindowFrame> m_frame;
    DrawnTexts m_drawn{DrawnTexts::PaintedIn::Ground};
    PageHost m_pages;
    ResizeGrip m_grip;
    std::string m_caption;
    std::uint64_t m_ground = NextLook();  // of the frame in its present size
    KeptPicture m_picture;
};

}  // namespace brennvar
