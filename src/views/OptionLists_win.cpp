#include "views/OptionLists_win.h"

#include <optional>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "dialogs/SavePlaceDialog_win.h"
#include "ui/Enabling_win.h"
#include "views/SpamListAddDialog_win.h"

namespace brennvar {
namespace {

ServiceList::Parts With(ServiceList::Parts parts, std::shared_ptr<const ListSource> source) {
    parts.source = std::move(source);
    return parts;
}

}  // namespace

OptionLists::OptionLists(const CFonts& fonts, const Language& language, const ServiceList::Parts& parts,
                         Sources sources, Owner& owner)
    : m_fonts(fonts),
      m_language(language),
      m_owner(owner),
      m_trusted(With(parts, std::move(sources.trusted)), *this),
      m_sites(With(parts, std::move(sources.sites)), *this),
      m_byControl{{IDC_TRUSTED_LIST, &m_trusted}, {IDC_SITES_LIST, &m_sites}} {}

ServiceList* OptionLists::Find(int control) {
    switch (control) {
        case IDC_TRUSTED_LIST: return &m_trusted;
        case IDC_SITES_LIST: return &m_sites;
        default: return nullptr;
    }
}

void OptionLists::Adopt(OptionForm& form) {
    COptionList* const list = form.List();
    if (!list) return;
    list->events.selectionChanged = [this] { ShowState(); };
    const ServiceList* const entries = Find(::GetDlgCtrlID(list->Window()));
    if (entries == &m_sites) list->removeWanted = [this] { RemoveSites(); };
    m_forms[entries] = &form;
}

OptionForm* OptionLists::FormOf(const ServiceList& list) const {
    const auto found = m_forms.find(&list);
    return found == m_forms.end() ? nullptr : found->second;
}

void OptionLists::BeforeEntriesChange(const ServiceList& list) {
    if (OptionForm* const form = FormOf(list)) form->List()->BeforeChange();
}

void OptionLists::AfterEntriesChange(const ServiceList& list) {
    if (OptionForm* const form = FormOf(list)) form->List()->AfterChange();
}

void OptionLists::ChangeIsOver(const ServiceList& list) {
    if (&list == &m_sites) m_owner.SitesChanged();
}

void OptionLists::ShowState() {
    OptionForm* const form = FormOf(m_sites);
    if (!form) return;
    SetEnabled({{form->ControlWindow(IDC_SITES_REMOVE), m_sites.CanRemove(form->List()->SelectedPlaces())}},
               form->List()->Window());
}

void OptionLists::OnButton(int control, HWND window) {
    switch (control) {
        case IDC_TRUSTED_ADD: return AddTrusted(window);
        case IDC_SITES_ADD: return AddSite(window);
        case IDC_SITES_REMOVE: return RemoveSites();
        default: return;
    }
}

void OptionLists::AddTrusted(HWND window) {
    const std::optional<HWND> owner = ModalOwner(::GetAncestor(window, GA_ROOT));
    if (!owner) return;
    const auto program = AskOpenPath(*owner, {.title = m_language.GetText(2126, "Trust a program"),
                                              .name = {},
                                              .types = {{m_language.GetText(2009, "Programs"), "exe"}}});
    if (!program) return;
    if (const Text problem = m_trusted.ProblemOf(*program); problem.number != 0) {
        ShowMessage(m_fonts, m_language, *owner, m_language.GetText(problem));
    } else {
        m_trusted.Add(*program);
    }
}

void OptionLists::AddSite(HWND window) {
    const std::optional<HWND> owner = ModalOwner(::GetAncestor(window, GA_ROOT));
    if (!owner) return;
    if (const auto name = SpamListAddDialog(m_fonts, m_language, m_sites).Ask(*owner)) m_sites.Add(*name);
}

void OptionLists::RemoveSites() {
    if (OptionForm* const form = FormOf(m_sites)) m_sites.Remove(form->List()->SelectedPlaces());
}

void OptionLists::Reload() {
    m_trusted.Reload();
    m_sites.Reload();
}

void OptionLists::Follow() {
    m_trusted.Follow();
    m_sites.Follow();
}

}  // namespace brennvar
