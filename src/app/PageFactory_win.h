// Makes the pages of the control center and gives each what it needs of the session.
#pragma once

#include <functional>
#include <memory>

#include "app/PageList.h"
#include "app/Session_win.h"
#include "config/ResourceChoice.h"
#include "dialogs/Page_win.h"

namespace brennvar {

// The user's choice of skin and language. False: not now.
using ApplyResources = std::function<bool(const ResourceChoice& current, const ResourceChoice& chosen)>;

// The session is borrowed for the life of the page.
[[nodiscard]] std::unique_ptr<CPage> MakePage(const PageInfo& info, Session& session,
                                              const ApplyResources& applyResources);

}  // namespace brennvar
