// The program from its start to its end.
#pragma once

#include "base/Clock.h"

namespace brennvar {

// Runs the control center, or calls the one that is running already. The clock is the one that the user-interface
// thread tells the time by. Returns the exit code, which is always 0. Throws when there is no window to be had.
[[nodiscard]] int RunProgram(Clock& clock);

// What is said when RunProgram has thrown. Nothing starts the program again after that.
void TellFailedStart(const char* reason);

}  // namespace brennvar
