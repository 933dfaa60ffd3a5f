// The pages of a window and the buttons that open them; one page is shown at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/Windows_win.h"
#include "ui/Fonts.h"
#include "ui/Page.h"

namespace brennvar {

class PageHost {
public:
    struct Entry {
        int command = 0;  // also the number of the button
        std::string caption;
        std::unique_ptr<CPage> page;
    };
    static constexpr int kColumnWidth = 184;  // at 96 pixels per inch

    // Buttons and pages become children of the window, which gets the buttons' commands. No page is shown yet.
    [[nodiscard]] bool Create(HWND parent, const CFonts& fonts, std::vector<Entry> entries);
    // False for a command that opens none of the pages.
    bool Open(int command);
    [[nodiscard]] bool HasPage(int command) const { return Find(command) != nullptr; }
    // Null until the first page was opened.
    [[nodiscard]] CPage* Current() const { return m_current ? m_current->page.get() : nullptr; }
    void Place(const RECT& place) const;
    void OnRulesChanged() const;

private:
    [[nodiscard]] const Entry* Find(int command) const;

    HWND m_parent = nullptr;
    std::vector<Entry> m_entries;
    const Entry* m_current = nullptr;
};

}  // namespace brennvar
