// The Options page: the choice of skin and language.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/Language.h"
#include "config/ResourceChoice.h"
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

    void Fill(int id, const std::vector<std::string>& names, const std::string& selected) const;
    [[nodiscard]] std::string Selected(int id, const std::string& otherwise) const;
    void Apply();

    const Language& m_language;
    const Resources m_resources;
    ResourceChoice m_current;  // as the lists were filled, or as the last choice was sent
};

}  // namespace brennvar
