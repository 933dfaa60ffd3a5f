#include "views/OptionsPage_win.h"

#include <utility>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

constexpr int kRowHeight = 24;
constexpr int kRowStep = 32;
constexpr int kLabelWidth = 176;
constexpr int kListWidth = 240;
constexpr int kOpenListHeight = 240;
constexpr int kTextOffset = 4;  // the labels stand in the middle of their row
constexpr int kButtonWidth = 104;
constexpr int kButtonHeight = 32;

}  // namespace

OptionsPage::OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts, Resources resources)
    : CPage(fonts, std::move(texts)), m_language(language), m_resources(std::move(resources)) {}

void OptionsPage::OnCreateContent() {
    // Not sorted: as the system lists the folders.
    constexpr DWORD kList = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;
    const HFONT font = GetLook().fonts.Text();
    CreateControl(Window(), "STATIC", m_language.GetText(342, "Skins/Languages:"), SS_NOPREFIX,
                  IDC_OPTIONS_RESOURCES, GetLook().fonts.Bold());
    CreateControl(Window(), "STATIC", m_language.GetText(343, "Active skin:"), SS_NOPREFIX, IDC_OPTIONS_SKIN_LABEL,
                  font);
    CreateControl(Window(), "COMBOBOX", "", kList, IDC_OPTIONS_SKIN, font);
    CreateControl(Window(), "STATIC", m_language.GetText(344, "Active language:"), SS_NOPREFIX,
                  IDC_OPTIONS_LANGUAGE_LABEL, font);
    CreateControl(Window(), "COMBOBOX", "", kList, IDC_OPTIONS_LANGUAGE, font);
    CreateControl(Window(), "BUTTON", m_language.GetText(1116, "Apply"), WS_TABSTOP | BS_PUSHBUTTON,
                  IDC_OPTIONS_APPLY_RESOURCES, font);
}

void OptionsPage::OnPlaceContent(const RECT& place) {
    int top = place.top;
    const auto put = [&](int id, int left, int offset, int width, int height) {
        ::SetWindowPos(Item(id), nullptr, place.left + Scale(left), top + Scale(offset), Scale(width),
                       Scale(height), SWP_NOZORDER | SWP_NOACTIVATE);
    };
    put(IDC_OPTIONS_RESOURCES, 0, 0, kLabelWidth + kListWidth, kRowHeight);
    top += Scale(kRowStep);
    put(IDC_OPTIONS_SKIN_LABEL, 0, kTextOffset, kLabelWidth, kRowHeight - kTextOffset);
    put(IDC_OPTIONS_SKIN, kLabelWidth, 0, kListWidth, kOpenListHeight);
    top += Scale(kRowStep);
    put(IDC_OPTIONS_LANGUAGE_LABEL, 0, kTextOffset, kLabelWidth, kRowHeight - kTextOffset);
    put(IDC_OPTIONS_LANGUAGE, kLabelWidth, 0, kListWidth, kOpenListHeight);
    top += Scale(kRowStep);
    put(IDC_OPTIONS_APPLY_RESOURCES, kLabelWidth + kListWidth - kButtonWidth, 0, kButtonWidth, kButtonHeight);
}

void OptionsPage::Reload() {
    m_current = m_resources.current();
    Fill(IDC_OPTIONS_SKIN, m_resources.skins(), m_current.skin);
    Fill(IDC_OPTIONS_LANGUAGE, m_resources.languages(), m_current.language);
}

void OptionsPage::Fill(int id, const std::vector<std::string>& names, const std::string& selected) const {
    const HWND list = Item(id);
    ::SendMessageA(list, CB_RESETCONTENT, 0, 0);
    for (std::size_t index = 0; index < names.size(); ++index) {
        const LRESULT row = ::SendMessageA(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(names[index].c_str()));
        if (row < 0) continue;
        ::SendMessageA(list, CB_SETITEMDATA, static_cast<WPARAM>(row), static_cast<LPARAM>(index));
        // Not the control's own search, which disregards case.
        if (names[index] == selected) ::SendMessageA(list, CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
}

std::string OptionsPage::Selected(int id, const std::string& otherwise) const {
    const bool isSelected = ::SendMessageA(Item(id), CB_GETCURSEL, 0, 0) != CB_ERR;
    return isSelected ? TextOfWindow(Item(id)) : otherwise;
}

void OptionsPage::OnCommand(int id, int notification) {
    if (id == IDC_OPTIONS_APPLY_RESOURCES && notification == BN_CLICKED) Apply();
}

void OptionsPage::Apply() {
    // Where nothing is selected, as in an empty list, nothing is to change.
    const ResourceChoice chosen{.skin = Selected(IDC_OPTIONS_SKIN, m_current.skin),
                                .language = Selected(IDC_OPTIONS_LANGUAGE, m_current.language)};
    // The next choice is compared with what the service has got now.
    if (m_resources.apply(m_current, chosen)) m_current = chosen;
}

}  // namespace brennvar
