// Rules to an archive and back, 100,000 of them, beside the programs that everybody has for that. Both ends on the
// disk, flushing, the check of the archive, the restore point and the swap included.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "ipc/RecordCipher.h"
#include "rules/ApplicationRuleRecord.h"
#include "rules/RuleImport.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

constexpr std::size_t kRecordSize = sizeof(ApplicationRuleRecord);
constexpr int kRules = 100'000;

// A folder with the rules and an archive of them.
class Data {
public:
    Data() {
        std::vector<ApplicationRuleRecord> rules(kRules);
        for (int i = 0; i < kRules; ++i) {
            char path[160];
            (void)std::snprintf(path, sizeof path, R"(C:\Program Files\Maker %03d\Program %lld\program%05d.exe)",
                                i * 7919 % 331, i * 7919LL % 9973, i);
            auto& rule = rules[static_cast<std::size_t>(i)];
            PutText(rule.path, path);
            rule.action = static_cast<RuleAction>(i % 3);
        }
        const auto bytes = std::as_writable_bytes(std::span(rules));
        CipherRecords(bytes, kRecordSize);
        m_folder.Write("Rules/rules.conf", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        (void)Export("rules.fxz");
        std::filesystem::create_directories(m_folder.File("unzipped"));
    }
    [[nodiscard]] bool Export(const std::string& name) {
        const auto rules = files.Read(m_folder.File("Rules/rules.conf"), kMostUnpacked);
        ArchiveWriter archive;
        if (!rules || !archive.AddFile("rules.conf", *rules, Packing::Deflated)) return false;
        const auto bytes = archive.Close();
        return bytes && files.Write(m_folder.File(name), *bytes) == WriteResult::Written;
    }
    [[nodiscard]] bool Import() {
        const auto bytes = files.Read(m_folder.File("rules.fxz"), kLongestArchive);
        RuleImport import(files, clock,
                          {.rules = m_folder.File("Rules"),
                           .import = m_folder.File("Rules.import"),
                           .restore = m_folder.File("Rules.restore")});
        const StopSignal stop;
        return bytes &&
               import.Apply(PlanImport(*bytes), RuleImport::Kind::Import, stop).result == ImportResult::Done;
    }
    [[nodiscard]] std::string File(const std::string& name) const { return m_folder.File(name); }

    DiskRuleFiles files;
    test::FakeClock clock;

private:
    test::TempFolder m_folder;
};

Data& TheData() {
    static Data data;
    return data;
}

// A program of the system's, which may not be there.
void Run(benchmark::State& state, const std::string& command) {
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) state.SkipWithError("the program is not there, or has failed");
    }
}

void ExportRules(benchmark::State& state) {
    for (auto _ : state) {
        if (!TheData().Export("exported.fxz")) state.SkipWithError("cannot export");
    }
}
BENCHMARK(ExportRules)->Unit(benchmark::kMillisecond)->UseRealTime();

void ZipRules(benchmark::State& state) {
    const std::string archive = TheData().File("zipped.zip");
    Run(state, "rm -f " + archive + "; zip -6 -q -j " + archive + " " + TheData().File("Rules/rules.conf"));
}
BENCHMARK(ZipRules)->Unit(benchmark::kMillisecond)->UseRealTime();

void ImportRules(benchmark::State& state) {
    for (auto _ : state) {
        if (!TheData().Import()) state.SkipWithError("cannot import");
    }
}
BENCHMARK(ImportRules)->Unit(benchmark::kMillisecond)->UseRealTime();

void UnzipRules(benchmark::State& state) {
    Run(state, "unzip -q -o " + TheData().File("rules.fxz") + " -d " + TheData().File("unzipped"));
}
BENCHMARK(UnzipRules)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace brennvar
