// Version resources of program files.
#pragma once

#include <string>

namespace brennvar {

// The file description of a program in the ANSI code page; empty when the file, its version resource or the
// description is missing or damaged. Any thread.
[[nodiscard]] std::string ReadFileDescription(const std::string& path);

// The version of the running program as its own resource has it, "1.2.3"; empty without one. Any thread.
[[nodiscard]] std::string ReadOwnVersion();

}  // namespace brennvar
