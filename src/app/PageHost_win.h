// The pages of a window and the buttons that open them; one page is shown at a time. A page is made when it is
// opened for the first time.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Windows_win.h"
#include "controls/Button_win.h"
#include "dialogs/Page_win.h"
#include "ui/Look_win.h"

namespace brennvar {

class PageHost {
public:
    struct Entry {
        int command = 0;  // also the number of the button
        std::string caption;
        // Nothing for a button that opens no page: its command is the window's own affair.
        std::function<std::unique_ptr<CPage>()> make;
    };

    // The buttons become children of the window, which gets their commands. No page is shown yet.
    void Create(HWND parent, const Look& look, std::vector<Entry> entries);
    // False for a command that opens none of the pages. The page that is shown is asked first, and may stay. The
    // new one appears as one picture, its button with it.
    bool Open(int command);
    [[nodiscard]] bool HasPage(int command) const;
    // Null until the first page was opened.
    [[nodiscard]] CPage* Current() const { return m_current ? m_current->page.get() : nullptr; }
    // What opens the page that is shown; 0 until the first one was opened.
    [[nodiscard]] int CurrentCommand() const { return m_current ? m_current->entry.command : 0; }
    // Buttons without a page stand at the lower end of the column.
    void Place(const RECT& column, const RECT& page);
    void OnRulesChanged() const;
    void OnLogsDeleted() const;
    // Whether the window is on the screen, neither hidden nor minimised: a page that nobody sees does nothing, and
    // comes back with fresh data.
    void OnWindowSeen(bool isSeen) const;

private:
    struct Slot {
        Entry entry;
        CButton button;
        std::unique_ptr<CPage> page;
    };
    [[nodiscard]] Slot* Find(int command) const;
    [[nodiscard]] bool MakePage(Slot& slot) const;

    HWND m_parent = nullptr;
    std::vector<std::unique_ptr<Slot>> m_slots;
    Slot* m_current = nullptr;
    RECT m_column{};
    RECT m_pagePlace{};
};

}  // namespace brennvar
