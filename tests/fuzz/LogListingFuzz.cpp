// Traffic and packet logs of any bytes are listed, searched, sorted, read by number, followed and exported. The
// first byte says which log and what is wished, the second where it is cut for the service to append the rest.
#include <algorithm>
#include <set>

#include "FuzzInput.h"
#include "logs/LogExport.h"
#include "logs/LogListing.h"

namespace brennvar {
namespace {

const LogTexts& Texts() {
    static const Language english{nullptr};
    static const LogTexts texts{english};
    return texts;
}

struct Listed final : LogNewsSink {
    std::vector<std::uint32_t> numbers;
    std::uint32_t plain = 0;
    LogExtent extent;
    std::shared_ptr<PacketPlaces> packets;
    bool isOver = false;
    void Put(LogNews news) override {
        fuzz::Require(!isOver);
        if (news.isAnew) {
            fuzz::Require(numbers.empty() && plain == 0);
            packets = news.packets;
        }
        plain += news.plain;
        numbers.insert(numbers.end(), news.numbers.begin(), news.numbers.end());
        if (news.extent) extent = *news.extent;
        isOver = news.isOver;
    }
};

Listed ListAll(LogPlace& place, const LogWish& wish) {
    const StopSignal never;
    Listed listed;
    ListLog(place, wish, Texts(), never, listed);
    fuzz::Require(listed.isOver && listed.plain + listed.numbers.size() <= listed.extent.count);
    if (listed.packets) place.packets = listed.packets;
    return listed;
}

// Every way to list finds the same entries, and each of them can be read by its number.
void CheckWishes(LogPlace place, std::uint32_t count) {
    LogWish wish;
    for (std::size_t column = 0; column < kLogColumnCount; ++column) {
        wish.sortedBy = static_cast<LogColumn>(column);
        wish.isAscending = column % 2 == 0;
        const Listed sorted = ListAll(place, wish);
        const std::set<std::uint32_t> different(sorted.numbers.begin(), sorted.numbers.end());
        fuzz::Require(sorted.numbers.size() == count && different.size() == count);
        fuzz::Require(count == 0 || *different.rbegin() == count - 1);
    }
    wish = {};
    wish.searched = "0";
    const Listed found = ListAll(place, wish);
    fuzz::Require(found.numbers.size() == count);  // there is one in every time
    const auto reader = LogReader::Open(place);
    for (const std::uint32_t number : found.numbers) {
        fuzz::Require(reader->Read(number) != nullptr);
        if (place.kind == LogKind::Packet) {
            const auto packet = reader->ReadPacket(number);
            fuzz::Require(packet && packet->captured.size() <= packet->header.packetSize);
        }
    }
    fuzz::Require(reader->Read(count) == nullptr);
}

void CheckExport(const LogPlace& place, std::uint32_t count) {
    const StopSignal never;
    LogExportState state;
    const std::string path = fuzz::Folder().File("exported");
    ExportLog(
        {.place = place, .count = count, .numberAt = [](std::size_t i) { return static_cast<std::uint32_t>(i); }},
        path, LogFormat::Text, Texts(), CodePage::CentralEuropean, never, state);
    fuzz::Require(state.result == WriteResult::Written && state.missing == 0);
    std::ifstream file(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    fuzz::Require(std::count(text.begin(), text.end(), '\n') == static_cast<std::ptrdiff_t>(count) + 1);
}

void TryLog(LogKind kind, const std::string& bytes, std::size_t cut) {
    LogPlace place;
    place.kind = kind;
    place.path = fuzz::Folder().Write("listed.log", bytes.substr(0, cut));
    const Listed first = ListAll(place, {});
    fuzz::Require(first.plain == first.extent.count);
    // What is appended is found from there on.
    {
        std::ofstream file(place.path, std::ios::binary | std::ios::app);
        file << bytes.substr(cut);
    }
    const auto followed = FollowLog(place, {}, Texts(), first.extent);
    fuzz::Require(followed && followed->extent);
    const std::uint32_t count = followed->extent->count;
    fuzz::Require(followed->plain == count - first.extent.count);
    LogPlace again = place;
    fuzz::Require(ListAll(again, {}).plain == count);
    CheckWishes(again, count);
    CheckExport(again, count);
}

}  // namespace
}  // namespace brennvar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    if (size < 2) return 0;
    const std::string bytes = fuzz::TextOfInput(data + 2, size - 2);
    TryLog(data[0] % 2 == 0 ? LogKind::Traffic : LogKind::Packet, bytes, bytes.size() * data[1] / 255);
    return 0;
}
