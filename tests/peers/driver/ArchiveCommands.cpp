#include "Commands.h"
#include "base/StopSignal.h"
#include "base/SystemClock.h"
#include "rules/ImportPlan.h"
#include "rules/RuleArchive.h"
#include "rules/RuleFiles.h"
#include "rules/RuleFolders.h"
#include "rules/RuleImport.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <list>
#include <optional>
#include <string>

namespace brennvar::peers {
namespace {

std::optional<std::string> ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool WriteAll(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    return static_cast<bool>(file.flush());
}

const char* TextOf(ArchiveFault fault) {
    switch (fault) {
        case ArchiveFault::None: return "done";
        case ArchiveFault::NotOpened: return "not opened";
        case ArchiveFault::Damaged: return "damaged";
        case ArchiveFault::Enciphered: return "enciphered";
        case ArchiveFault::UnknownMethod: return "unknown method";
        case ArchiveFault::TooLarge: return "too large";
        case ArchiveFault::SameNameTwice: return "same name twice";
        case ArchiveFault::Empty: return "empty";
    }
    return "?";
}

void Tell(const char* outcome) {
    (void)std::printf("outcome: %s\n", outcome);
}

}  // namespace

void Pack(const Arguments& arguments) {
    const auto names = arguments.All("name");
    const auto files = arguments.All("file");
    std::list<std::string> contents;  // borrowed by the writer until it is closed
    ArchiveWriter writer;
    for (std::size_t index = 0; index < names.size() && index < files.size(); ++index) {
        const auto content = ReadAll(files[index]);
        if (!content) return Tell("a file cannot be read");
        contents.push_back(*content);
        const Packing packing = arguments.Has("stored") ? Packing::Stored : Packing::Deflated;
        if (!writer.AddFile(names[index], contents.back(), packing)) return Tell("an entry was refused");
    }
    if (arguments.Has("comment") && !writer.SetComment(arguments.Text("comment"))) return Tell("comment refused");
    const auto bytes = writer.Close();
    if (!bytes) return Tell("no archive");
    Tell(WriteAll(arguments.Text("archive"), *bytes) ? "done" : "not written");
}

void Import(const Arguments& arguments) {
    const auto bytes = ReadAll(arguments.Text("archive"));
    if (!bytes) return Tell("a file cannot be read");
    const ImportPlan plan = PlanImport(*bytes);
    if (plan.fault != ArchiveFault::None) {
        (void)std::printf("entry: %s\n", Printable(plan.faultyEntry).c_str());
        return Tell(TextOf(plan.fault));
    }
    for (const PlannedFile& file : plan.files) (void)std::printf("file: %s\n", Printable(file.path).c_str());
    (void)std::printf("skipped: %zu\ncomment: %s\n", plan.skipped,
                      Printable(ArchiveReader(*bytes).Comment()).c_str());
    const StopSignal stop;
    SystemClock clock(stop);
    DiskRuleFiles files;
    const ImportOutcome outcome =
        RuleImport(files, clock, RuleFoldersOf(arguments.Text("data"))).Apply(plan, RuleImport::Kind::Import, stop);
    if (outcome.isHalfway) return Tell("halfway");
    Tell(outcome.result == ImportResult::Done ? "done" : "not imported");
}

}  // namespace brennvar::peers
