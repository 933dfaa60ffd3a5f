// What questions tell of a program beside its name, its picture and its path.
#pragma once

#include <optional>
#include <string>

#include "config/Language.h"

namespace brennvar {

struct ProgramWords {
    std::string file;          // as it is, to open its folder; empty: nobody knows the program
    std::string placeWarning;  // "runs from a temporary folder"; empty: there is nothing to warn of
    std::string publisherLabel;
    std::string publisher;  // on one line, of a length that can be shown
    bool isPublisherMissing = false;
    std::string publisherNote;  // how far to trust it; empty: there is none to be trusted
};

// path: empty for a program that nobody knows. company: what its file says; nothing: the file was not looked into,
// or not in time; empty: it names none.
[[nodiscard]] ProgramWords DescribeProgram(const std::string& path, const std::optional<std::string>& company,
                                           const Language& language);

}  // namespace brennvar
