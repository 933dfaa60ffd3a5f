#include "service/ScenarioWords.h"

#include <charconv>
#include <limits>

namespace brennvar::standin {
namespace {

constexpr std::string_view kBlanks = " \t\r";

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::string_view Words::Word() {
    const std::size_t end = std::min(m_rest.find_first_of(kBlanks), m_rest.size());
    const std::string_view word = m_rest.substr(0, end);
    m_rest = TrimBlanks(m_rest.substr(end));
    if (word.empty()) m_good = false;
    return word;
}

std::optional<std::string_view> Words::WordAfter(std::string_view begin) {
    if (!m_rest.starts_with(begin)) return std::nullopt;
    return Word().substr(begin.size());
}

std::uint32_t Words::ProcessId(std::string_view word) {
    const auto name = std::find(m_names.begin(), m_names.end(), word);
    if (name == m_names.end()) return Take(ParseNumber32(word));
    return kFirstStartedProcess + static_cast<std::uint32_t>(name - m_names.begin());
}

std::uint32_t Words::NewProcess() {
    const std::string_view name = Word();
    if (ParseNumber32(name)) Reject();
    m_names.emplace_back(name);
    return ProcessId(name);
}

std::optional<Endpoint> ParseEndpoint(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const auto address = ParseIpv4(text.substr(0, colon));
    const auto port = ParseNumber32(text.substr(colon + 1));
    if (!address || !port || *port > 0xFFFF) return std::nullopt;
    return Endpoint{*address, SwapPort(static_cast<std::uint16_t>(*port))};
}

std::optional<std::uint32_t> ParseProtocol(std::string_view word) {
    constexpr std::pair<std::string_view, std::uint32_t> kNames[] = {
        {"ip", kProtocolIp}, {"icmp", kProtocolIcmp}, {"tcp", kProtocolTcp}, {"udp", kProtocolUdp}};
    const auto named = Choose(kNames, word);
    return named ? named : ParseNumber32(word);
}

std::optional<RuleAction> ParseRuleAction(std::string_view word) {
    constexpr std::pair<std::string_view, RuleAction> kNames[] = {
        {"allow", RuleAction::Allow}, {"deny", RuleAction::Deny}, {"ask", RuleAction::Ask}};
    return Choose(kNames, word);
}

std::optional<std::array<std::uint8_t, 6>> ParseHardwareAddress(std::string_view text) {
    std::array<std::uint8_t, 6> address{};
    constexpr std::size_t kTextSize = 6 * 2 + 5;  // "aa-bb-cc-dd-ee-ff"
    if (text.size() != kTextSize) return std::nullopt;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const char* const digits = text.data() + i * 3;
        if (i + 1 < address.size() && digits[2] != '-') return std::nullopt;
        const auto [end, error] = std::from_chars(digits, digits + 2, address[i], 16);
        if (error != std::errc{} || end != digits + 2) return std::nullopt;
    }
    return address;
}

std::optional<std::uint64_t> ParseWholeNumber(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x")) {
        base = 16;
        text.remove_prefix(2);
    }
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc{} || rest != end) return std::nullopt;
    return number;
}

std::optional<std::uint32_t> ParseNumber32(std::string_view text) {
    const auto number = ParseWholeNumber(text);
    if (!number || *number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

}  // namespace brennvar::standin
