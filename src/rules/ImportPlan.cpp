#include "rules/ImportPlan.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/AsciiCase.h"
#include "rules/SafeEntryName.h"

namespace brennvar {
namespace {

constexpr std::string_view kCommentHead = "Brennvar restore point";
constexpr std::string_view kAddedLine = "added ";

bool IsFolder(std::string_view name) {
    return name.ends_with('/') || name.ends_with('\\');
}

ImportPlan Refused(ArchiveFault fault, std::string entry = {}) {
    return {.fault = fault, .faultyEntry = std::move(entry)};
}

}  // namespace

ImportPlan PlanImport(std::string_view archive) {
    const ArchiveReader reader(archive);
    if (reader.Fault() != ArchiveFault::None) return Refused(reader.Fault());
    ImportPlan plan;
    std::vector<std::size_t> chosen;
    std::unordered_set<std::string> taken;
    std::uint64_t size = 0;
    for (std::size_t i = 0; i < reader.Count(); ++i) {
        const ArchiveReader::Entry& entry = reader.Entries()[i];
        auto path = EntryPath(entry.name);
        if (!path) {
            if (!IsFolder(entry.name)) ++plan.skipped;
            continue;
        }
        if (entry.fault != ArchiveFault::None) return Refused(entry.fault, entry.name);
        // Which of the two the user has seen elsewhere nobody knows.
        if (!taken.insert(LowerCase(*path)).second) return Refused(ArchiveFault::SameNameTwice, entry.name);
        size += entry.size;
        if (size > kMostUnpacked) return Refused(ArchiveFault::TooLarge, entry.name);
        plan.files.push_back({.path = *std::move(path), .crc = entry.crc});
        chosen.push_back(i);
    }
    if (plan.files.empty()) return Refused(ArchiveFault::Empty);
    // Only now, when all of it may be: what is refused costs nothing.
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        auto content = reader.Extract(chosen[i]);
        if (!content) return Refused(ArchiveFault::Damaged, reader.Entries()[chosen[i]].name);
        plan.files[i].content = *std::move(content);
    }
    return plan;
}

ImportPlan PlanRestore(std::string_view archive) {
    ImportPlan plan = PlanImport(archive);
    if (plan.fault != ArchiveFault::None && plan.fault != ArchiveFault::Empty) return plan;
    for (std::string& path : AddedFilesOf(ArchiveReader(archive).Comment())) {
        const auto isPath = [&](const PlannedFile& file) { return EqualsIgnoringCase(file.path, path); };
        if (std::any_of(plan.files.begin(), plan.files.end(), isPath)) continue;
        plan.files.push_back({.path = std::move(path), .isRemoved = true});
    }
    plan.fault = plan.files.empty() ? ArchiveFault::Empty : ArchiveFault::None;
    return plan;
}

std::string RestoreComment(const std::vector<std::string>& added) {
    std::string comment(kCommentHead);
    comment += '\n';
    for (const std::string& path : added) comment.append(kAddedLine).append(path).append("\n");
    return comment;
}

std::vector<std::string> AddedFilesOf(std::string_view comment) {
    std::vector<std::string> added;
    bool isHead = true;
    while (!comment.empty()) {
        const std::size_t end = comment.find('\n');
        if (end == std::string_view::npos) break;  // every line of ours has an end
        const std::string_view line = comment.substr(0, end);
        comment.remove_prefix(end + 1);
        if (std::exchange(isHead, false)) {
            if (line != kCommentHead) break;
        } else if (line.starts_with(kAddedLine)) {
            const std::string_view path = line.substr(kAddedLine.size());
            if (EntryPath(path) == path) added.emplace_back(path);
        }
    }
    return added;
}

}  // namespace brennvar
