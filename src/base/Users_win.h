// The users of this machine.
#pragma once

#include <string>
#include <vector>

namespace brennvar {

// "DOMAIN\name" in the system's code page, without regard to case sorted, each once: who has logged in, the
// accounts of this machine and those that its services run as. May wait for a domain.
[[nodiscard]] std::vector<std::string> ListUsers();

}  // namespace brennvar
