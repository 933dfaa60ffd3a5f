// One page of a window with page buttons: a child dialog with a title, a line that says what it shows, and room for
// its content.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "controls/DrawnText_win.h"
#include "dialogs/CardLinks_win.h"
#include "ui/Dialog_win.h"
#include "ui/Fonts_win.h"
#include "ui/Look_win.h"

namespace brennvar {

struct PageTexts {
    std::string title;
    std::string line;  // what the page shows, in one line
};

class CPage : public CDialog {
public:
    CPage(const CFonts& fonts, PageTexts texts);

    // Creates the page, hidden.
    [[nodiscard]] bool Create(HWND parent);
    void Place(const RECT& place);
    // Neither paints anything: whoever shows or hides pages sees to the window that they are in.
    void Show();
    void Hide();
    [[nodiscard]] bool IsShown() const { return m_shown; }

    [[nodiscard]] bool TellParts(PictureParts& parts) const override;
    void TellAccessible(AccessibleThing& thing) const override;
    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &m_drawn; }

    // The user asks for fresh data (F5).
    virtual void Reload() {}
    // The user looks for something (Ctrl+F).
    virtual void OnFind() {}
    // The user wants to leave the page, or the program. May ask, which pumps messages. False: the page stays.
    virtual bool MayLeave() { return true; }
    // The user has pressed Esc, anywhere in the window.
    virtual void OnEscape() {}
    // Another page wants this row to be seen; pages that are no lists have none.
    virtual void ShowRow(const std::string& /*key*/) {}
    // The service has been told to delete logs.
    virtual void OnLogsDeleted() {}
    // The application rules have changed.
    virtual void OnRulesChanged() {}

protected:
    virtual void OnCreateContent() {}
    // The room below the title, in client coordinates.
    virtual void OnPlaceContent(const RECT&) {}
    // What the title's right side has to leave free, in pixels of the screen.
    [[nodiscard]] virtual int RoomBesideTitle() const { return 0; }
    virtual void OnShow() {}
    virtual void OnHide() {}

    // A command for the window that the page belongs to; it is carried out later, when the page's handler is over.
    void PostToOwner(int command) const;

    // The line below the title, when there is more to say than what the page shows. Empty: that.
    void SetLine(const std::string& line) { m_line.SetText(line.empty() ? m_texts.line : line); }

    // Grounds for groups of controls; for OnPlaceContent.
    void SetCards(std::vector<PageCard> cards);

    // From OnCreateContent on.
    [[nodiscard]] const Look& GetLook() const { return *m_look; }
    // What the page writes on its ground.
    [[nodiscard]] DrawnTexts& Texts() { return m_drawn; }

    // An override calls it for every message that is not its own.
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnInitDialog() final;
    void OnSize(int width, int height) final;
    void OnCancel() final { OnEscape(); }
    bool OnEraseBackground(HDC dc) final;
    void PaintGround(HDC dc) const;
    void SetVisible(bool isVisible) const;

    const CFonts& m_fonts;
    const PageTexts m_texts;
    std::optional<Look> m_look;
    DrawnTexts m_drawn{DrawnTexts::PaintedIn::Ground};
    CDrawnText m_title;
    CDrawnText m_line;
    CardLinks m_cards;
    std::uint64_t m_ground = NextLook();  // what the cards stand on
    bool m_shown = false;
};

}  // namespace brennvar
