#include "advanced/RuleFields.h"

#include <algorithm>

#include "base/AsciiCase.h"
#include "base/Calendar.h"
#include "logs/ServiceNameTable.h"

namespace brennvar {
namespace {

constexpr Text kMaskFault{1960, "A mask looks like 255.255.255.0 or /24."};
constexpr Text kNoMask{1961, "These addresses are not one mask: use several rules."};
constexpr Text kAddressesFault{1962, "The first address is above the last one."};
constexpr Text kLookUpFirst{1963, "A name has to be looked up first."};
constexpr Text kPortsFault{1964, "Ports look like 80 or 80-88, from 1 to 65535."};
constexpr Text kPortOrderFault{1965, "The first port is above the last one."};
constexpr Text kServiceFault{1966, "No service of this protocol has this name."};
constexpr Text kTimeFault{1971, "A time looks like 8:00, from 0:00 to 23:59."};
constexpr Text kDayFault{1972, "A day looks like 2026-12-24."};
constexpr Text kNoSuchDay{1973, "The calendar does not have this day."};

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBlanks = " \t\r\n";
// A name of the domain system has at most 253 letters (RFC 1035, 2.3.4).
constexpr std::size_t kLongestName = 253;

bool IsAny(std::string_view text) {
    return text.empty() || text == "*" || EqualsIgnoringCase(text, "any");
}

// What stands before and after a character, without blanks; nothing: it is not there.
std::optional<std::pair<std::string_view, std::string_view>> SplitAt(std::string_view text, std::size_t place) {
    if (place == std::string_view::npos) return std::nullopt;
    return std::pair(WithoutBlanks(text.substr(0, place)), WithoutBlanks(text.substr(place + 1)));
}

std::optional<std::uint8_t> HexDigit(char c) {
    constexpr std::string_view kHex = "0123456789abcdef";
    const std::size_t place = kHex.find(AsciiLower(c));
    return place == std::string_view::npos ? std::nullopt : std::optional(static_cast<std::uint8_t>(place));
}

// Six pairs of hexadecimal digits with the same sign between them.
std::optional<HardwareAddress> ReadHardware(std::string_view text) {
    constexpr std::size_t kPair = 3;  // with its sign
    HardwareAddress hardware{};
    if (text.size() != hardware.size() * kPair - 1 || (text[2] != ':' && text[2] != '-')) return std::nullopt;
    for (std::size_t i = 0; i < hardware.size(); ++i) {
        const auto high = HexDigit(text[i * kPair]);
        const auto low = HexDigit(text[i * kPair + 1]);
        if (!high || !low || (i > 0 && text[i * kPair - 1] != text[2])) return std::nullopt;
        hardware[i] = static_cast<std::uint8_t>(*high << 4U | *low);
    }
    return hardware;
}

FieldValue<TypedHost> HostOf(Ipv4 address, std::optional<Ipv4> mask) {
    return TypedHost{.kind = RuleEnd::Kind::Ipv4, .address = address, .mask = mask};
}

// A range is a mask when it has as many addresses as a mask leaves, and begins at a multiple of that.
FieldValue<TypedHost> ReadRange(Ipv4 from, Ipv4 to) {
    const std::uint32_t first = SwapAddress(from);
    const std::uint32_t last = SwapAddress(to);
    if (first > last) return kAddressesFault;
    const Ipv4 mask = SwapAddress(~(first ^ last));
    if (!PrefixOf(mask) || (first & (first ^ last)) != 0) return kNoMask;
    return HostOf(from, mask);
}

std::string_view NameOf(const ServiceName& service) {
    // "HTTP - Web browsing"; the names of protocols are the same in every language.
    return service.text.english.substr(0, service.text.english.find(" - "));
}

}  // namespace

std::optional<std::uint32_t> ReadNumber(std::string_view text, std::size_t digits, std::uint32_t most) {
    if (text.empty() || text.size() > digits) return std::nullopt;
    std::uint64_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + static_cast<std::uint64_t>(c - '0');
    }
    return number <= most ? std::optional(static_cast<std::uint32_t>(number)) : std::nullopt;
}

std::string_view WithoutBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool IsHostName(std::string_view text) {
    text = WithoutBlanks(text);
    if (text.empty() || text.size() > kLongestName || IsAny(text)) return false;
    const auto isOfName = [](char c) {
        return (AsciiLower(c) >= 'a' && AsciiLower(c) <= 'z') || kDigits.find(c) != std::string_view::npos ||
               c == '.' || c == '-' || c == '_';
    };
    // With a hyphen between numbers it is meant as a range.
    const bool isNumbers = text.find_first_not_of("0123456789.-") == std::string_view::npos;
    return !isNumbers && !ReadHardware(text) && std::all_of(text.begin(), text.end(), isOfName);
}

FieldValue<TypedHost> ReadHost(std::string_view text, const Text& invalid) {
    text = WithoutBlanks(text);
    if (IsAny(text)) return TypedHost{};
    if (const auto hardware = ReadHardware(text)) {
        return TypedHost{.kind = RuleEnd::Kind::Hardware, .hardware = *hardware};
    }
    if (const auto address = ParseIpv4(text)) return HostOf(*address, std::nullopt);
    if (IsHostName(text)) return kLookUpFirst;
    if (const auto range = SplitAt(text, text.find('-'))) {
        const auto first = ParseIpv4(range->first);
        const auto last = ParseIpv4(range->second);
        if (!first || !last) return invalid;
        return ReadRange(*first, *last);
    }
    const auto parts = SplitAt(text, text.find_first_of("/ \t"));
    const auto address = parts ? ParseIpv4(parts->first) : std::nullopt;
    if (!address) return invalid;
    const FieldValue<Ipv4> mask = ReadMask(parts->second);
    // "192.0.2.0/" is on the way to a mask.
    if (!mask.IsWhole() || parts->second.empty()) return kMaskFault;
    return HostOf(*address, *mask);
}

FieldValue<Ipv4> ReadMask(std::string_view text) {
    text = WithoutBlanks(text);
    if (text.empty()) return MaskOf(32);
    if (text.front() == '/') text = WithoutBlanks(text.substr(1));
    if (const auto mask = ParseIpv4(text)) {
        return PrefixOf(*mask) ? FieldValue<Ipv4>(*mask) : FieldValue<Ipv4>(kMaskFault);
    }
    const auto prefix = ReadNumber(text, 2, 32);
    if (!prefix) return kMaskFault;
    return MaskOf(static_cast<int>(*prefix));
}

FieldValue<PortRange> ReadPorts(std::string_view text, RuleProtocol protocol) {
    text = WithoutBlanks(text);
    if (IsAny(text)) return PortRange{};
    if (kDigits.find(text.front()) == std::string_view::npos) {
        PortRange range{};
        for (const ServiceName& service : ServiceNames()) {
            if (!EqualsIgnoringCase(NameOf(service), text)) continue;
            if (protocol == RuleProtocol::Udp && !service.alsoUdp) continue;
            if (range.first == 0) range.first = service.remotePort;
            range.last = service.remotePort;
        }
        return range.first == 0 ? FieldValue<PortRange>(kServiceFault) : FieldValue<PortRange>(range);
    }
    const auto range = SplitAt(text, text.find('-'));
    const auto first = ReadNumber(range ? range->first : text, 5, 0xFFFF);
    const auto last = range ? ReadNumber(range->second, 5, 0xFFFF) : first;
    // 0 to 0 is how a rule is stored that is for any port.
    if (!first || !last || (*first == 0 && *last == 0)) return kPortsFault;
    if (*first > *last) return kPortOrderFault;
    return PortRange{.first = static_cast<std::uint16_t>(*first), .last = static_cast<std::uint16_t>(*last)};
}

FieldValue<std::uint16_t> ReadTime(std::string_view text) {
    text = WithoutBlanks(text);
    const auto parts = SplitAt(text, text.find_first_of(":."));
    const auto hour = ReadNumber(parts ? parts->first : text, 2, 23);
    const auto minute = parts ? ReadNumber(parts->second, 2, 59) : std::optional<std::uint32_t>(0);
    if (!hour || !minute || (parts && parts->second.size() != 2)) return kTimeFault;
    return static_cast<std::uint16_t>(*hour * 60 + *minute);
}

FieldValue<LocalDate> ReadDay(std::string_view text) {
    text = WithoutBlanks(text);
    const std::size_t place = text.find_first_of("-/.");
    if (place == std::string_view::npos) return kDayFault;
    const auto head = SplitAt(text, place);
    const auto tail = SplitAt(head->second, head->second.find(text[place]));
    if (!tail) return kDayFault;
    const bool isDayFirst = text[place] == '.';
    const std::string_view yearText = isDayFirst ? tail->second : head->first;
    const auto year = ReadNumber(yearText, 4, 9999);
    const auto month = ReadNumber(tail->first, 2, 99);
    const auto day = ReadNumber(isDayFirst ? head->first : tail->second, 2, 99);
    if (!year || !month || !day || yearText.size() != 4) return kDayFault;
    const LocalDate date{
        .year = static_cast<int>(*year), .month = static_cast<int>(*month), .day = static_cast<int>(*day)};
    return IsOfCalendar(date) ? FieldValue<LocalDate>(date) : FieldValue<LocalDate>(kNoSuchDay);
}

}  // namespace brennvar
