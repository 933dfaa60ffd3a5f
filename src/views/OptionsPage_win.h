// The Options page: a list of sections, of which one is shown, and the button that applies it. What stands in the
// fields and what becomes of it is the editor's affair (OptionEditor.h).
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/DrawnText_win.h"
#include "controls/ListBox_win.h"
#include "dialogs/Page_win.h"
#include "ui/Balloon_win.h"
#include "views/OptionEditor.h"
#include "views/OptionForm_win.h"
#include "views/OptionLists_win.h"
#include "views/OptionSections.h"

namespace brennvar {

class OptionsPage final : public CPage, private OptionEditor::View, private OptionLists::Owner {
public:
    OptionsPage(const CFonts& fonts, const Language& language, PageTexts texts, const OptionEditor::Parts& parts,
                OptionLists::Sources lists);
    ~OptionsPage() override;

    void Reload() override;
    // Asks what to do with changes that have not been applied.
    bool MayLeave() override;

private:
    void OnCreateContent() override;
    void OnPlaceContent(const RECT& place) override;
    void OnShow() override;
    void OnHide() override;
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void TakeEdits() override;
    void ShowOptions() override;
    void ListStateChanged() override { ShowState(); }
    void SitesChanged() override { TellOfFilteringLater(); }

    [[nodiscard]] const SectionInfo& Info() const { return OptionSections()[m_current]; }
    [[nodiscard]] OptionForm* Form() { return m_forms[m_current].get(); }
    void ChooseSection();
    [[nodiscard]] bool CreateForm(std::size_t index);
    void OpenSection(std::size_t index);
    void FillResourceLists();
    void PlaceNote();
    // What the control below the mouse or with the keyboard does.
    void ShowHelp(HWND control);
    void ShowState();
    void ShowNote();
    void OnRowCommand(const RowInfo& row, int notification);
    void WarnOfSpoofing();
    // True when the user has to be told to restart the browser.
    bool Apply();
    void TellOfBrowser(HWND owner);
    void TellOfFilteringLater();
    void ShowFilteringApplied();

    const Language& m_language;
    SkinsAndLanguages& m_resources;
    OptionEditor m_editor;
    OptionLists m_lists;
    CListBox m_list;
    CButton m_apply;
    CButton m_discard;  // what the user has changed and not applied
    CDrawnText m_note;
    CDrawnText m_help;
    CBalloon m_balloon;
    RECT m_formPlace{};
    RECT m_footer{};                                   // below the form: the button, and what is said beside it
    std::vector<std::unique_ptr<OptionForm>> m_forms;  // one per section, made when it is opened for the first time
    std::size_t m_current = 0;
    bool m_isShowing = false;  // the page fills fields itself
    bool m_isAsking = false;   // the user is asked about leaving
};

}  // namespace brennvar
