// Version resources of program files.
#pragma once

#include <string>

namespace brennvar {

// The file description of a program in the ANSI code page; empty when the file, its version resource or the
// description is missing or damaged. Any thread.
[[nodiscard]] std::string ReadFileDescription(const std::string& path);

// What a program says of itself, in the ANSI code page; each empty when it is missing or damaged.
struct ProgramVersion {
    std::string description;
    std::string company;
    std::string version;
};
// All empty for a file on another machine, which is not looked into. Any thread.
[[nodiscard]] ProgramVersion ReadProgramVersion(const std::string& path);

// The version of the running program as its own resource has it, "1.2.3"; empty without one. Any thread.
[[nodiscard]] std::string ReadOwnVersion();

}  // namespace brennvar
