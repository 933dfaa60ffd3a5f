// The folders that an import works in, all on one disk.
#pragma once

#include <string>

#include "config/Folders.h"

namespace brennvar {

struct RuleFolders {
    std::string rules;    // the service's
    std::string import;   // empty, or not there, but for an import
    std::string restore;  // restore points
};

[[nodiscard]] inline RuleFolders RuleFoldersOf(const std::string& dataFolder) {
    return {.rules = RulesFolderPath(dataFolder),
            .import = ImportFolderPath(dataFolder),
            .restore = RestoreFolderPath(dataFolder)};
}

}  // namespace brennvar
