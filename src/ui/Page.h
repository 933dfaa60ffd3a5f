// One page of a window with page buttons: a child dialog with a title, a line that says what it shows, and room for
// its content.
#pragma once

#include <string>

#include "ui/Dialog.h"
#include "ui/Fonts.h"

namespace brennvar {

class CPage : public CDialog {
public:
    CPage(const CFonts& fonts, std::string title, std::string line);

    // Creates the page, hidden.
    [[nodiscard]] bool Create(HWND parent);
    void Place(const RECT& place);
    void Show();
    void Hide();
    [[nodiscard]] bool IsShown() const { return m_shown; }

    // The user asks for fresh data (F5).
    virtual void Reload() {}
    // The application rules have changed.
    virtual void OnRulesChanged() {}

protected:
    virtual void OnCreateContent() {}
    // The room below the title, in client coordinates.
    virtual void OnPlaceContent(const RECT&) {}
    virtual void OnShow() {}
    virtual void OnHide() {}

    [[nodiscard]] const CFonts& Fonts() const { return m_fonts; }

private:
    void OnInitDialog() final;
    void OnSize(int width, int height) final;
    void OnCancel() final {}

    const CFonts& m_fonts;
    const std::string m_title;
    const std::string m_line;
    bool m_shown = false;
};

}  // namespace brennvar
