// Opens something in the program that the user has for it. The shell and the program may take any time, so each
// call has a thread of its own, for which nobody waits. Nothing is told when it does not work.
#pragma once

#include <string>

namespace brennvar {

// A page of the web. The caller has made sure that the address is one.
void OpenInBrowser(const std::string& address);
// The folder that the file of this machine lies in; nothing is opened on other machines.
void OpenFolderOf(const std::string& file);

}  // namespace brennvar
