// A file that the user wants to send by mail. The control center opens the form (app/MailWindow_win.h).
// User-interface thread only; nothing here waits.
#pragma once

#include <string>

namespace brennvar {

struct MailWish {
    std::string path;          // of the file that is attached
    std::string name;          // as the recipient sees it
    std::string contentType;   // "text/csv", "application/zip"
    std::string subject;       // suggested
    bool isTemporary = false;  // made for this mail: it is deleted when the form is closed
};

class MailForms {
public:
    virtual ~MailForms() = default;
    // Opens the form later than this call, when the handler that asks is over and no other dialog stands over the
    // control center; several open one after another. Without a control center it is refused (a temporary file is
    // deleted all the same).
    virtual void OpenMailForm(const MailWish& wish) = 0;
};

}  // namespace brennvar
