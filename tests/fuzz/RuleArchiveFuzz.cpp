// Rule archives with the import behind them: any bytes are refused, or become files of the folder and nothing else;
// the same for restore points, which may make files go, and for the journal of an import that broke off.
#include <filesystem>

#include "FuzzInput.h"
#include "rules/RuleImport.h"
#include "support/FakeClock.h"

namespace brennvar {
namespace {

namespace fs = std::filesystem;

// Where an import could write to by mistake has one file, which is looked at afterwards.
struct Place {
    test::TempFolder folder = [] {
        (void)setenv("TMPDIR", "/dev/shm", 0);
        return test::TempFolder();
    }();
    RuleFolders folders{.rules = folder.File("data/Rules"),
                        .import = folder.File("data/Rules.import"),
                        .restore = folder.File("data/Rules.restore")};
};

void CheckImport(const ImportPlan& plan, Place& place) {
    std::uint64_t size = 0;
    for (const PlannedFile& file : plan.files) size += file.content.size();
    fuzz::Require(size <= kMostUnpacked && (plan.fault == ArchiveFault::None) == !plan.files.empty());
    // Writing is slow; what is large is no more interesting than what is not.
    constexpr std::size_t kMostFiles = 20;
    if (plan.files.empty() || plan.files.size() > kMostFiles || size > (1U << 20)) return;
    fs::remove_all(place.folder.File("data"));
    place.folder.Write("data/Rules/rules.conf", "before");
    DiskRuleFiles files;
    test::FakeClock clock;
    const StopSignal stop;
    RuleImport import(files, clock, place.folders);
    const ImportOutcome outcome = import.Apply(plan, RuleImport::Kind::Import, stop);
    import.ServiceKnows();
    fuzz::Require(!outcome.isHalfway && !fs::exists(place.folders.import));
    for (const PlannedFile& file : plan.files) {
        const std::string path = "data/Rules/" + file.path;
        const bool isThere = fs::is_regular_file(place.folder.File(path));
        if (outcome.result == ImportResult::Done) {
            fuzz::Require(isThere != file.isRemoved && place.folder.Read(path) == file.content);
        }
    }
    if (outcome.result != ImportResult::Done) fuzz::Require(place.folder.Read("data/Rules/rules.conf") == "before");
    // Nothing beside the folders of an import.
    for (const auto& entry : fs::directory_iterator(place.folder.Path())) {
        fuzz::Require(entry.path().filename() == "data");
    }
    for (const auto& entry : fs::directory_iterator(place.folder.File("data"))) {
        fuzz::Require(entry.path().filename() == "Rules" || entry.path().filename() == "Rules.restore");
    }
}

}  // namespace
}  // namespace brennvar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    static Place place;
    const std::string bytes = fuzz::TextOfInput(data, size);
    CheckImport(PlanImport(bytes), place);
    CheckImport(PlanRestore(bytes), place);
    if (const auto journal = ParseJournal(bytes)) fuzz::Require(ParseJournal(FormatJournal(*journal)) == journal);
    return 0;
}
