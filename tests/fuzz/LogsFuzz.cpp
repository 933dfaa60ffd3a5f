// DNS log, MAC log and advice file: any bytes yield answers that fit. The first byte says which file.
#include <algorithm>

#include "FuzzInput.h"
#include "base/Bytes.h"
#include "logs/LogRecords.h"
#include "logs/Lookups.h"

namespace brennvar {
namespace {

constexpr LocalDate kDay{.year = 2026, .month = 3, .day = 9};
const StopSignal kGoOn;

// What to ask for: the address in the file's last whole record, which must be found.
template <RecordType Record>
std::optional<Record> LastRecord(std::string_view bytes) {
    const std::size_t count = bytes.size() / sizeof(Record);
    if (count == 0) return std::nullopt;
    return DecodeRecord<Record>(std::as_bytes(std::span(bytes)).subspan((count - 1) * sizeof(Record)));
}

// What is asked of a file that has grown, is answered as if it had been like that from the start.
template <class Ask>
void TryGrowth(const test::DataFolder& folder, const std::string& name, const std::string& bytes, Ask ask) {
    LogLookups lookups(folder.Path(), kGoOn);
    folder.Write(name, bytes.substr(0, bytes.size() / 2));
    (void)ask(lookups);
    folder.Write(name, bytes);
    LogLookups fresh(folder.Path(), kGoOn);
    fuzz::Require(ask(lookups) == ask(fresh));
}

void TryDnsLog(const test::DataFolder& folder, const std::string& bytes) {
    folder.Write(R"(\Log\20260309_dns.log)", bytes);
    const auto last = LastRecord<DnsLogRecord>(bytes);
    const std::string name = LogLookups(folder.Path(), kGoOn).HostName(kDay, last ? last->address : 0);
    fuzz::Require(name == (last ? TextOf(last->name) : std::string_view()));
    TryGrowth(folder, R"(\Log\20260309_dns.log)", bytes,
              [&](LogLookups& lookups) { return lookups.HostName(kDay, last ? last->address : 0); });
}

void TryMacLog(const test::DataFolder& folder, const std::string& bytes) {
    folder.Write(R"(\Log\20260309_mac.log)", bytes);
    const auto last = LastRecord<MacLogRecord>(bytes);
    const std::string text = LogLookups(folder.Path(), kGoOn).HardwareAddress(kDay, last ? last->address : 0);
    fuzz::Require(text.size() == (last ? 17U : 0U));
    TryGrowth(folder, R"(\Log\20260309_mac.log)", bytes,
              [&](LogLookups& lookups) { return lookups.HardwareAddress(kDay, last ? last->address : 0); });
}

void TryAdvice(const test::DataFolder& folder, const std::string& bytes) {
    folder.Write(R"(\advice.dat)", bytes);
    const auto last = LastRecord<AdviceRecord>(bytes);
    const std::string_view path = last ? TextOf(last->path) : std::string_view("x");
    fuzz::Require(LogLookups(folder.Path(), kGoOn).Advice(path).has_value() == (last.has_value() && !path.empty()));
    TryGrowth(folder, R"(\advice.dat)", bytes, [&](LogLookups& lookups) { return lookups.Advice(path); });
}

}  // namespace
}  // namespace brennvar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    if (size == 0) return 0;
    const test::DataFolder& folder = fuzz::Folder();
    const std::string bytes = fuzz::TextOfInput(data + 1, size - 1);
    switch (data[0] % 3) {
        case 0: TryDnsLog(folder, bytes); break;
        case 1: TryMacLog(folder, bytes); break;
        default: TryAdvice(folder, bytes); break;
    }
    return 0;
}
