// The windows of the export and import of rules, over the control center or whatever dialog of it is open.
#pragma once

#include "base/Windows_win.h"
#include "config/Language.h"
#include "ui/Fonts_win.h"
#include "views/RuleDialogs.h"

namespace brennvar {

class WinRuleDialogs final : public RuleDialogs {
public:
    // Both are borrowed.
    WinRuleDialogs(const CFonts& fonts, const Language& language) : m_fonts(fonts), m_language(language) {}
    // The control center; null: there is none, and nothing can be asked.
    void SetOwner(HWND owner) { m_owner = owner; }

    [[nodiscard]] std::optional<std::string> AskSavePath(const SaveWish& wish) override;
    [[nodiscard]] std::optional<std::string> AskOpenPath(const OpenWish& wish) override;
    [[nodiscard]] bool AskImport(const ImportRows& rows) override;
    [[nodiscard]] bool Ask(const std::string& question, const std::string& yes, Otherwise otherwise) override;
    void Tell(const std::string& text) override;

private:
    // Where a dialog may open now; null: nowhere.
    [[nodiscard]] HWND Place() const;

    const CFonts& m_fonts;
    const Language& m_language;
    HWND m_owner = nullptr;
};

}  // namespace brennvar
