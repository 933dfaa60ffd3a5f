// The security password as the service keeps it: the text of option 4.
#pragma once

#include <string>

#include "base/Clock.h"
#include "base/Password.h"

namespace brennvar {

// Empty when none is set, and when the file cannot be read. Waits for the service as every reader of its files does
// (RecordFile); what is deciphered on the way is wiped. Any thread.
[[nodiscard]] Password ReadStoredPassword(const std::string& dataFolder, Clock& clock);

}  // namespace brennvar
