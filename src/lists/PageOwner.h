// The window that pages belong to, as a page sees it beyond the commands that it posts.
#pragma once

#include <string>

#include "dialogs/AddressTools.h"

namespace brennvar {

class PageOwner : public AddressTools {
public:
    // Opens the page of this command when the handler that asks is over, and shows the row with this key there as
    // soon as the page has it.
    virtual void OpenPageAt(int command, const std::string& key) = 0;
    // A notice of the program itself, at the notification area.
    virtual void Notify(const std::string& title, const std::string& text) = 0;
};

}  // namespace brennvar
