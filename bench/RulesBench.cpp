// The rules file: deciphering a very large one in memory, and looking up the last of many rules. Each beside the
// least that could be done with the same bytes.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "ipc/RecordCipher.h"
#include "rules/ApplicationRules.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

constexpr std::size_t kRecordSize = sizeof(ApplicationRuleRecord);
constexpr std::size_t kManyRecords = 1'000'000;
constexpr int kFileRecords = 100'000;

void DecipherRules(benchmark::State& state) {
    std::vector<std::byte> rules(kManyRecords * kRecordSize, std::byte{1});
    for (auto _ : state) {
        CipherRecords(rules, kRecordSize);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(rules.size()));
}
BENCHMARK(DecipherRules)->Unit(benchmark::kMillisecond);

void CopyRules(benchmark::State& state) {
    const std::vector<std::byte> rules(kManyRecords * kRecordSize, std::byte{1});
    std::vector<std::byte> copy(rules.size(), std::byte{2});
    for (auto _ : state) {
        std::memcpy(copy.data(), rules.data(), rules.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(rules.size()));
}
BENCHMARK(CopyRules)->Unit(benchmark::kMillisecond);

// Paths of one length and one file name: nothing but the number in the middle tells them apart.
std::string PathOfRule(int number) {
    char path[80];
    (void)std::snprintf(path, sizeof path, R"(C:\Program Files\Maker %06d\Program\program.exe)", number);
    return path;
}

const std::string& RulesFile() {
    static const test::TempFolder folder;
    static const std::string file = [] {
        std::vector<ApplicationRuleRecord> rules(kFileRecords);
        for (int i = 0; i < kFileRecords; ++i) {
            auto& rule = rules[static_cast<std::size_t>(i)];
            PutText(rule.path, PathOfRule(i));
            rule.action = RuleAction::Allow;
        }
        const auto bytes = std::as_writable_bytes(std::span(rules));
        CipherRecords(bytes, kRecordSize);
        return folder.Write("rules.conf", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }();
    return file;
}

void LookUpLastRule(benchmark::State& state) {
    const std::string& file = RulesFile();
    const std::string path = PathOfRule(kFileRecords - 1);
    test::FakeClock clock;
    for (auto _ : state) {
        if (LookupApplicationAction(file, clock, path) != RuleAction::Allow) state.SkipWithError("not found");
    }
}
BENCHMARK(LookUpLastRule)->Unit(benchmark::kMillisecond);

// One fread of the whole file into memory that is there already.
void ReadRulesFile(benchmark::State& state) {
    const std::string& path = RulesFile();
    std::vector<std::byte> bytes(kFileRecords * kRecordSize, std::byte{1});
    for (auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        if (file == nullptr || std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
            state.SkipWithError("cannot read");
        }
        if (file != nullptr) (void)std::fclose(file);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ReadRulesFile)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brennvar
