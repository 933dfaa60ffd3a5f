// Whatever a pipe's server answers becomes a short text without zeros, or nothing.
#include "FuzzInput.h"
#include "ipc/FilterQueue.h"
#include "ipc/PipeRecords.h"
#include "ipc/ServicePipes.h"
#include "support/FakeClock.h"
#include "support/FakePipe.h"

namespace {

using brennvar::fuzz::Require;

// A text may come only from a whole record of status 2, and is what stands in the record.
void CheckText(const std::optional<std::string>& text, std::span<const std::byte> answer, std::size_t recordSize,
               std::size_t textOffset, std::size_t maxLength) {
    const bool isValid = answer.size() >= recordSize && answer[0] == std::byte{2} && answer[1] == std::byte{0} &&
                         answer[2] == std::byte{0} && answer[3] == std::byte{0};
    Require(text.has_value() == isValid);
    if (!text) return;
    Require(text->size() <= maxLength);
    Require(text->find('\0') == std::string::npos);
    Require(text->size() == maxLength || answer[textOffset + text->size()] == std::byte{0});
    Require(text->compare(0, text->size(), reinterpret_cast<const char*>(answer.data()) + textOffset,
                          text->size()) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    const auto answer = std::as_bytes(std::span(data, size));
    test::FakePipe pipe;
    pipe.server = [&](const test::FakePipe::Message&) {
        return test::FakePipe::Bytes(answer.begin(), answer.end());
    };
    test::FakeClock clock;
    ServicePipes service(pipe, clock);
    CheckText(service.ResolveProcessPath(1), answer, sizeof(PidResolveAnswer), 8, kProcessPathSize - 1);
    CheckText(service.FetchTrayText(), answer, sizeof(TrayTextAnswer), 4, 4095);
    const std::uint32_t verdict = FilterQueue(pipe, clock).FILTER_QUERY("site");
    Require(verdict <= 2 && (verdict == 0 || size >= sizeof(FilterQueueRecord)));
    return 0;
}
