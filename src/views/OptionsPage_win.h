// The Options page: the choice of skin and language.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/Language.h"
#include "config/ResourceChoice.h"
#include "ui/Button.h"
#include "ui/ComboBox.h"
#include "ui/Label.h"
#include "ui/Page.h"

namespace brennvar {

class OptionsPage final : public CPage {
public:
    struct Resources {
        std::function<std::vector<std::string>()> skins;
        std::function<std::vector<std::string>()> languages;
        std::function<ResourceChoice()> current;
        // The user wants these instead of the current ones, or the same again. False: not now.
        std::function<bool(const ResourceChoice& current, const ResourceChoice& chosen)> apply;
    };

    OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Resources resources);

    void Reload() override;

private:
    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override;
    void OnShow() override { Reload(); }
    void OnCommand(int id, int notification) override;

    void Apply();

    const Language& m_language;
    const Resources m_resources;
    CLabel m_heading;
    CLabel m_skinLabel;
    CLabel m_languageLabel;
    CComboBox m_skins;
    CComboBox m_languages;
    CButton m_apply;
    ResourceChoice m_current;  // as the lists were filled, or as the last choice was sent
};

}  // namespace brennvar
