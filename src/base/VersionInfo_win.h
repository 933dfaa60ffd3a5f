// Version resources of program files.
#pragma once

#include <optional>
#include <string>

#include "base/ProgramVersion.h"

namespace brennvar {

// The file description of a program in the ANSI code page; empty when the file, its version resource or the
// description is missing or damaged. Any thread.
[[nodiscard]] std::string ReadFileDescription(const std::string& path);

// All empty for a file on another machine, which is not looked into. Any thread.
[[nodiscard]] ProgramVersion ReadProgramVersion(const std::string& path);
// The same; nothing for a file that was not looked into, because it is not there or on another machine.
[[nodiscard]] std::optional<ProgramVersion> FindProgramVersion(const std::string& path);

// The version of the running program as its own resource has it, "1.2.3"; empty without one. Any thread.
[[nodiscard]] std::string ReadOwnVersion();

}  // namespace brennvar
