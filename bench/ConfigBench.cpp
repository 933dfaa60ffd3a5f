// Filling all option pages: one reading of the options file per option.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "config/Options.h"
#include "ipc/RecordCipher.h"
#include "support/DataFolder.h"
#include "support/FakeClock.h"

namespace brennvar {
namespace {

constexpr std::uint32_t kRecords = 80;
constexpr std::uint32_t kReads = 70;

void ReadAllOptions(benchmark::State& state) {
    std::vector<OptionRecord> records(kRecords);
    for (std::uint32_t i = 0; i < kRecords; ++i) records[i] = {.id = i + 1, .value = 1000 + i, .text = {}};
    const auto bytes = std::as_writable_bytes(std::span(records));
    CipherRecords(bytes, sizeof(OptionRecord));
    const test::DataFolder folder;
    folder.Write(R"(\config.conf)", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    test::FakeClock clock;
    const OptionReader options(folder.Path(), clock);
    for (auto _ : state) {
        for (std::uint32_t id = kRecords - kReads + 1; id <= kRecords; ++id) {
            if (options.ReadOption(id, 0) != 999 + id) state.SkipWithError("wrong value");
        }
    }
}
BENCHMARK(ReadAllOptions)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brennvar
