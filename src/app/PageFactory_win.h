// Makes the pages of the control center and gives each what it needs of the session.
#pragma once

#include <memory>

#include "app/PageList.h"
#include "app/Session_win.h"
#include "config/SkinsAndLanguages.h"
#include "dialogs/MailWish.h"
#include "dialogs/Page_win.h"
#include "lists/PageOwner.h"

namespace brennvar {

// Session, resources and mail are borrowed for the life of the page.
[[nodiscard]] std::unique_ptr<CPage> MakePage(const PageInfo& info, Session& session, SkinsAndLanguages& resources,
                                              PageOwner& owner, MailForms& mail);

}  // namespace brennvar
