// Restore points: what the folder "Rules" held before an import changed it, in a dated archive that "Import
// Rules..." reads like any other. The last kMostRestorePoints are kept. They are not packed, which costs an import
// no time: together they have at most kMostRestorePoints times the size of the rules on the disk.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "rules/RuleFiles.h"

namespace brennvar {

inline constexpr std::size_t kMostRestorePoints = 10;

struct RestorePoint {
    std::string name;     // of the file
    std::string moment;   // "2026-03-09 14:05:09", local time, or later when the clock was set back
    bool isUndo = false;  // made by taking an import back; else by an import
    friend bool operator==(const RestorePoint&, const RestorePoint&) = default;
};

// The restore points in a folder, the newest first; other files are none.
[[nodiscard]] std::vector<RestorePoint> FindRestorePoints(RuleFiles& files, const std::string& folder);
// A name of a restore point that is made now; later than those of all that are there, whatever the clock says.
[[nodiscard]] std::string NewRestorePointName(RuleFiles& files, const std::string& folder, FileTime now,
                                              bool isUndo);
// Deletes all but the last ones, and what was left where the program ended while it wrote one: nobody else may be
// writing one now.
void PruneRestorePoints(RuleFiles& files, const std::string& folder);

}  // namespace brennvar
