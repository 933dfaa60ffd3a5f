#include "advanced/WhyFields.h"

#include <charconv>

#include "base/Calendar.h"
#include "rules/RuleSentence.h"

namespace brennvar {
namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Digits only, and not above the most.
std::optional<std::uint32_t> ParseNumber(std::string_view text, std::uint32_t most) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number > most) return std::nullopt;
    return number;
}

std::optional<int> ParseTime(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == text.npos) return std::nullopt;
    const auto hour = ParseNumber(text.substr(0, colon), 23);
    const auto minute = ParseNumber(text.substr(colon + 1), 59);
    if (!hour || !minute || text.size() != colon + 3) return std::nullopt;
    return static_cast<int>(*hour * 60 + *minute);
}

std::optional<LocalDate> ParseDay(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = ParseNumber(text.substr(0, 4), 9999);
    const auto month = ParseNumber(text.substr(5, 2), 12);
    const auto day = ParseNumber(text.substr(8), 31);
    if (!year || !month || !day || *month == 0 || *day == 0) return std::nullopt;
    const LocalDate date{static_cast<int>(*year), static_cast<int>(*month), static_cast<int>(*day)};
    return NearestDay(date) == date ? std::optional(date) : std::nullopt;
}

// Puts texts into facts, and remembers the first that means nothing.
class Reader {
public:
    explicit Reader(const WhyTexts& texts) : m_texts(texts) {}
    // Calls put with what parse makes of the text, unless it is empty.
    template <class Parse, class Put>
    void Read(WhyField field, Parse parse, Put put) {
        const std::string_view text = TypedIn(field);
        if (text.empty()) return;
        if (const auto value = parse(text)) {
            put(*value);
        } else if (!m_wrong) {
            m_wrong = field;
        }
    }
    [[nodiscard]] std::string_view TypedIn(WhyField field) const { return Trimmed(TextOf(m_texts, field)); }
    [[nodiscard]] std::optional<WhyField> Wrong() const { return m_wrong; }

private:
    const WhyTexts& m_texts;
    std::optional<WhyField> m_wrong;
};

struct Address {
    Ipv4 ipv4 = 0;
    std::optional<HardwareAddress> hardware{};
};
std::optional<Address> ParseAddress(std::string_view text) {
    if (const auto address = ParseIpv4(text)) return Address{.ipv4 = *address};
    if (const auto hardware = ParseHardware(text)) return Address{.hardware = hardware};
    return std::nullopt;
}

std::string AddressText(Ipv4 address, const std::optional<HardwareAddress>& hardware) {
    return address != 0 ? FormatIpv4(address) : hardware ? HardwareText(*hardware) : std::string();
}
std::string PortText(std::uint16_t port) {
    return port == 0 ? std::string() : std::to_string(port);
}

}  // namespace

std::optional<HardwareAddress> ParseHardware(std::string_view text) {
    HardwareAddress address{};
    constexpr std::size_t kDigits = 3;  // of a byte, with what stands before the next one
    if (text.size() != address.size() * kDigits - 1) return std::nullopt;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const char* const at = text.data() + i * kDigits;
        const auto [end, error] = std::from_chars(at, at + 2, address[i], 16);
        if (error != std::errc() || end != at + 2) return std::nullopt;
        if (i + 1 < address.size() && *end != ':' && *end != '-') return std::nullopt;
    }
    return address;
}

WhyTexts WhyTextsOf(const TrafficFacts& facts) {
    WhyTexts texts;
    TextOf(texts, WhyField::Program) = facts.program;
    if (facts.protocol) TextOf(texts, WhyField::Protocol) = std::to_string(*facts.protocol);
    if (facts.direction != TrafficDirection::Unknown) {
        TextOf(texts, WhyField::Direction) = std::to_string(static_cast<int>(facts.direction));
    }
    TextOf(texts, WhyField::RemoteAddress) = AddressText(facts.remoteAddress, facts.remoteHardware);
    TextOf(texts, WhyField::RemotePort) = PortText(facts.remotePort);
    TextOf(texts, WhyField::LocalAddress) = AddressText(facts.localAddress, facts.localHardware);
    TextOf(texts, WhyField::LocalPort) = PortText(facts.localPort);
    TextOf(texts, WhyField::User) = facts.user;
    if (facts.when) {
        TextOf(texts, WhyField::Day) = DateText(facts.when->day);
        TextOf(texts, WhyField::Time) = TimeText(facts.when->minute);
    }
    return texts;
}

WhyQuestion ParseWhyTexts(const WhyTexts& texts, const LocalMoment& now) {
    WhyQuestion question{.moment = now};
    TrafficFacts& facts = question.facts;
    Reader reader(texts);
    const auto number = [](std::string_view text) { return ParseNumber(text, 0xFFFFFFFF); };
    const auto port = [](std::string_view text) { return ParseNumber(text, 0xFFFF); };
    facts.program = reader.TypedIn(WhyField::Program);
    facts.user = reader.TypedIn(WhyField::User);
    reader.Read(WhyField::Protocol, number, [&](std::uint32_t protocol) { facts.protocol = protocol; });
    reader.Read(WhyField::Direction, number, [&](std::uint32_t direction) {
        facts.direction = direction == 1 ? TrafficDirection::Incoming : TrafficDirection::Outgoing;
    });
    reader.Read(WhyField::RemoteAddress, ParseAddress, [&](const Address& address) {
        facts.remoteAddress = address.ipv4;
        facts.remoteHardware = address.hardware;
    });
    reader.Read(WhyField::RemotePort, port,
                [&](std::uint32_t value) { facts.remotePort = static_cast<std::uint16_t>(value); });
    reader.Read(WhyField::LocalAddress, ParseAddress, [&](const Address& address) {
        facts.localAddress = address.ipv4;
        facts.localHardware = address.hardware;
    });
    reader.Read(WhyField::LocalPort, port,
                [&](std::uint32_t value) { facts.localPort = static_cast<std::uint16_t>(value); });
    reader.Read(WhyField::Day, ParseDay, [&](const LocalDate& day) { question.moment.day = day; });
    reader.Read(WhyField::Time, ParseTime, [&](int minute) { question.moment.minute = minute; });
    facts.when = question.moment;
    question.wrong = reader.Wrong();
    return question;
}

}  // namespace brennvar
