// The helper that serves 32-bit programs.
#pragma once

#include <string>

namespace brennvar {

// Starts it from the installation folder unless it runs already; without it 32-bit programs are not watched, and
// nobody is told. May take a while.
void EnsureHelperRuns(const std::string& installationFolder);

}  // namespace brennvar
