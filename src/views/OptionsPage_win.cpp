#include "views/OptionsPage_win.h"

#include <algorithm>
#include <utility>

#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kCardMargin = 16;
constexpr int kRowHeight = 24;
constexpr int kRowStep = 32;
constexpr int kButtonGap = 8;
constexpr int kListWidth = 240;
constexpr int kLabelWidth = 144;  // wider where the language needs it
constexpr int kLabelGap = 16;

void Fill(const CComboBox& list, const std::vector<std::string>& names, const std::string& selected) {
    list.Clear();
    for (std::size_t index = 0; index < names.size(); ++index) {
        const int row = list.Add(names[index]);
        if (row < 0) continue;
        ::SendMessageA(list.Window(), CB_SETITEMDATA, static_cast<WPARAM>(row), static_cast<LPARAM>(index));
        // Not the control's own search, which disregards case.
        if (names[index] == selected) list.Select(row);
    }
}

// Where nothing is selected, as in an empty list, nothing is to change.
std::string SelectedOr(const CComboBox& list, const std::string& current) {
    return list.Selected() < 0 ? current : list.ItemText(list.Selected());
}

}  // namespace

OptionsPage::OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Resources resources)
    : CPage(fonts, std::move(texts)), m_language(language), m_resources(std::move(resources)) {}

void OptionsPage::OnCreateContent() {
    constexpr DWORD kOneLine = SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE;
    const Look& look = GetLook();
    m_heading.Create(Window(), m_language.GetText(342, "Skins/Languages:"), LabelKind::Bold, kOneLine,
                     IDC_OPTIONS_RESOURCES, look);
    m_skinLabel.Create(Window(), m_language.GetText(343, "Active skin:"), LabelKind::Plain, kOneLine,
                       IDC_OPTIONS_SKIN_LABEL, look);
    m_skins.Create(Window(), IDC_OPTIONS_SKIN, look);
    m_languageLabel.Create(Window(), m_language.GetText(344, "Active language:"), LabelKind::Plain, kOneLine,
                           IDC_OPTIONS_LANGUAGE_LABEL, look);
    m_languages.Create(Window(), IDC_OPTIONS_LANGUAGE, look);
    m_apply.Create(Window(), kButtonDialog, m_language.GetText(1116, "Apply"), IDC_OPTIONS_APPLY_RESOURCES, look);
}

void OptionsPage::OnPlaceContent(const RECT& place) {
    const int margin = Scale(kCardMargin);
    // As wide as the language needs it, while the lists stay in sight.
    const int room = static_cast<int>(place.right - place.left) - 2 * margin - Scale(kLabelGap + kListWidth);
    const int wanted = std::max(m_skinLabel.Measure(0).cx, m_languageLabel.Measure(0).cx);
    const int labelWidth = std::max(Scale(kLabelWidth), std::min(wanted, room));
    const LONG left = place.left + margin;
    const LONG listLeft = left + labelWidth + Scale(kLabelGap);
    const LONG right = listLeft + Scale(kListWidth);
    LONG top = place.top + margin;
    const auto placeRow = [&](const CLabel& label, const CComboBox& list) {
        label.Place({left, top, left + labelWidth, top + Scale(kRowHeight)});
        list.Place({listLeft, top, right, top + Scale(kRowHeight)});
        top += Scale(kRowStep);
    };
    m_heading.Place({left, top, right, top + Scale(kRowHeight)});
    top += Scale(kRowStep);
    placeRow(m_skinLabel, m_skins);
    placeRow(m_languageLabel, m_languages);
    top += Scale(kButtonGap);
    m_apply.MoveTo(right - m_apply.Size().cx, top);
    SetCards({{place.left, place.top, right + margin, top + m_apply.Size().cy + margin}});
}

void OptionsPage::Reload() {
    m_current = m_resources.current();
    Fill(m_skins, m_resources.skins(), m_current.skin);
    Fill(m_languages, m_resources.languages(), m_current.language);
}

void OptionsPage::OnCommand(int id, int notification) {
    if (id == IDC_OPTIONS_APPLY_RESOURCES && notification == BN_CLICKED) Apply();
}

void OptionsPage::Apply() {
    const ResourceChoice chosen{.skin = SelectedOr(m_skins, m_current.skin),
                                .language = SelectedOr(m_languages, m_current.language)};
    // The next choice is compared with what the service has got now.
    if (m_resources.apply(m_current, chosen)) m_current = chosen;
}

}  // namespace brennvar
