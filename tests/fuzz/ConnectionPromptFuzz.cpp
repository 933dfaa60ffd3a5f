// A driver that answers anything: the input is what it puts into the block and the request, the rest of the input
// serves as the texts of the outside. Whatever comes, the road ends with a well-formed answer or none.
#include <algorithm>
#include <cstring>
#include <string>

#include "FuzzInput.h"
#include "unit/prompts/QuestionRig.h"

namespace {

using namespace brennvar;
using fuzz::Require;

// The record at the front of input, filled up with zeros where the input ends.
template <RecordType Record>
Record Take(std::span<const std::byte>& input) {
    Record record{};
    const auto taken = input.first(std::min(sizeof record, input.size()));
    std::copy(taken.begin(), taken.end(), WritableRecordBytes(record).begin());
    input = input.subspan(taken.size());
    return record;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::span<const std::byte> input = std::as_bytes(std::span(data, size));
    const auto block = Take<PromptExchangeBlock>(input);
    const auto request = Take<ConnectionPromptRequest>(input);
    const std::string text(reinterpret_cast<const char*>(input.data()), input.size());

    test::QuestionRig rig;
    rig.driver.exchange = [&](std::uint32_t, std::span<std::byte> given) {
        const auto asked = DecodeRecord<PromptExchangeBlock>(given);
        Require(asked.has_value());
        // The driver gets addresses as numbers. NOLINTNEXTLINE(performance-no-int-to-ptr)
        auto* const area = reinterpret_cast<void*>(static_cast<std::uintptr_t>(asked->requestAddress));
        std::memcpy(area, &request, sizeof request);
        std::memcpy(given.data(), &block, sizeof block);
        return true;
    };
    const std::uint32_t processId = request.processId;
    const Ipv4 remoteAddress = request.remoteAddress;
    rig.sources.process = text.substr(0, 259);
    rig.sources.hosts[remoteAddress] = text;
    rig.sources.description = text;
    rig.sources.company = text;

    using State = ConnectionQuestions::State;
    const bool present = block.questionPresent != 0;
    rig.TickAndLookUp();
    rig.questions.Tick();
    Require(rig.questions.CurrentState() == (present ? State::Delivering : State::Idle));
    rig.delivering.RunAll();
    Require(rig.pipe.writes.size() == (present ? 1U : 0U));
    for (const test::FakePipe::Message& message : rig.pipe.writes) {
        const auto answer = DecodeRecord<ConnectionPromptAnswer>(message.bytes);
        Require(answer && answer->kind == 3 && answer->processId == processId && answer->path[259] == 0);
        Require((answer->decision == PromptDecision::None) == (processId == kNoProcess));
    }
    for (const PromptQuestion& question : rig.asker.questions) {
        Require(!question.displayName.empty() && !question.remoteHost.empty());
        Require(!question.program.publisher.empty() && question.program.publisher.size() <= 203);
        Require(question.program.publisher.find('\n') == std::string::npos);
        // The ten line breaks of the form, and none of a peer's.
        Require(std::count(question.body.begin(), question.body.end(), '\n') == 10);
    }
    return 0;
}
