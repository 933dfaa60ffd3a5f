// Connects the changes of the Applications page with the security password and the service.
#pragma once

#include <functional>

#include "ipc/ServiceLink.h"
#include "security/SecurityPasswordGate_win.h"
#include "views/ApplicationChanges.h"

namespace brennvar {

// Gate and link are borrowed for the life of the changes. owner: of the question for the password.
[[nodiscard]] ApplicationChanges::Parts ConnectApplicationChanges(SecurityPasswordGate& gate, ServiceLink& link,
                                                                  std::function<HWND()> owner);

}  // namespace brennvar
