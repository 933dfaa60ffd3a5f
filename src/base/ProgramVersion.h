// What a program file says of itself in its version resource. Whoever made the file wrote it, and nobody checks it.
#pragma once

#include <string>

namespace brennvar {

// In the ANSI code page; each empty when it is missing or damaged.
struct ProgramVersion {
    std::string description;
    std::string company;
    std::string version;
};

}  // namespace brennvar
