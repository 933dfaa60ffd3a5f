// The two lists of the Options page, trusted programs and filtered sites: what the user does to them, and what
// their controls show of it. The entries themselves are the service's (ServiceList.h).
#pragma once

#include <map>
#include <memory>

#include "config/Language.h"
#include "ui/Fonts_win.h"
#include "views/OptionForm_win.h"
#include "views/ServiceList.h"

namespace brennvar {

class OptionLists final : private ServiceList::View {
public:
    // Where they stand.
    struct Sources {
        std::shared_ptr<const ListSource> trusted;
        std::shared_ptr<const ListSource> sites;
    };
    // The page.
    class Owner {
    public:
        // A note is another one, or IsFollowing.
        virtual void ListStateChanged() = 0;
        // The browser filters by other sites now.
        virtual void SitesChanged() = 0;

    protected:
        ~Owner() = default;
    };

    // Borrowed but for the sources. parts: what both lists have in common; its source is left out.
    OptionLists(const CFonts& fonts, const Language& language, const ServiceList::Parts& parts, Sources sources,
                Owner& owner);

    // For the forms: the lists by the numbers of their controls.
    [[nodiscard]] const OptionForm::Lists& ByControl() const { return m_byControl; }
    // Null: there is no list of this number.
    [[nodiscard]] ServiceList* Find(int control);
    // The form of a section that has just been made; without a list nothing comes of it. Borrowed.
    void Adopt(OptionForm& form);
    // A button of a list's section, by its number. window: the page's, over which the dialogs stand.
    void OnButton(int control, HWND window);
    // What can be done to the selected entries.
    void ShowState();

    void Reload();
    // As ServiceList has them, of both.
    void Follow();
    [[nodiscard]] bool IsFollowing() const { return m_trusted.IsFollowing() || m_sites.IsFollowing(); }

private:
    void BeforeEntriesChange(const ServiceList& list) override;
    void AfterEntriesChange(const ServiceList& list) override;
    void StateChanged() override { m_owner.ListStateChanged(); }
    void ChangeIsOver(const ServiceList& list) override;

    // The form of a list that has been opened once; null before.
    [[nodiscard]] OptionForm* FormOf(const ServiceList& list) const;
    void AddTrusted(HWND window);
    void AddSite(HWND window);
    void RemoveSites();

    const CFonts& m_fonts;
    const Language& m_language;
    Owner& m_owner;
    TrustedList m_trusted;
    FilteredSites m_sites;
    const OptionForm::Lists m_byControl;
    std::map<const ServiceList*, OptionForm*> m_forms;
};

}  // namespace brennvar
