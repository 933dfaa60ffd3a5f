// What an archive would put into the folder "Rules": all of it unpacked, checked and in memory, and nothing done
// yet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "rules/RuleArchive.h"

namespace brennvar {

inline constexpr std::string_view kApplicationRulesEntry = "rules.conf";
inline constexpr std::string_view kAdvancedRulesEntry = "rules_advanced.conf";

struct PlannedFile {
    std::string path;        // below the folder, see EntryPath
    std::string content{};   // none for one that goes
    std::uint32_t crc = 0;   // CRC-32 of the content
    bool isRemoved = false;  // it is to be there no more: only in a plan that puts back what was
};

struct ImportPlan {
    ArchiveFault fault = ArchiveFault::None;  // there is nothing to do then
    std::string faultyEntry{};                // which one it is about, as it is stored
    std::vector<PlannedFile> files{};
    std::size_t skipped = 0;  // entries whose names can be no file of the folder; folders are not counted
};

// An archive that somebody chose. Memory: as much as it unpacks to, kMostUnpacked at most.
[[nodiscard]] ImportPlan PlanImport(std::string_view archive);

// A restore point (rules/RestorePoints.h): besides, the files go that its import had added.
[[nodiscard]] ImportPlan PlanRestore(std::string_view archive);

// The comment of a restore point whose import added these files, and what such a comment says.
[[nodiscard]] std::string RestoreComment(const std::vector<std::string>& added);
[[nodiscard]] std::vector<std::string> AddedFilesOf(std::string_view comment);

}  // namespace brennvar
