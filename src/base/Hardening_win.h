// Keeps code of others out of this process, as far as the version of Windows can.
#pragma once

namespace brennvar {

// For the beginning of the program, before anything is loaded: libraries come from Windows' own folder only unless
// they are named with their folder; none from other machines or written by programs of low integrity, those of
// Windows before others of the same name; and none by the old ways into every program (AppInit, legacy input
// methods, layered socket providers). What is loaded by then the system has loaded, from the program's folder or
// its own.
void HardenProcess();

}  // namespace brennvar
