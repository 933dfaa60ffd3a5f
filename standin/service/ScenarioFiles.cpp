// What scenarios say of the service's files: options, rules and lists, and what spoils them.
#include <charconv>

#include "config/OptionRecord.h"
#include "service/ScenarioWords.h"

namespace brennvar::standin {
namespace {

constexpr std::uint32_t kAnyProtocol = 0xFFFFFFFF;
constexpr std::uint32_t kArp = 806;

// N or N-M, both at most the given number.
std::optional<std::pair<std::uint16_t, std::uint16_t>> ParsePorts(std::string_view text) {
    const std::size_t hyphen = std::min(text.find('-'), text.size());
    const auto first = ParseNumber32(text.substr(0, hyphen));
    const auto last = hyphen < text.size() ? ParseNumber32(text.substr(hyphen + 1)) : first;
    if (!first || !last || *first > 0xFFFF || *last > 0xFFFF) return std::nullopt;
    return std::pair(static_cast<std::uint16_t>(*first), static_cast<std::uint16_t>(*last));
}

// "any", a hardware address, or an IPv4 address with "/prefix" or without; but for the second, ":port" or
// ":first-last" may follow.
std::optional<AdvancedRuleEnd> ParseEnd(std::string_view text) {
    enum : std::uint32_t { Any, Address, Hardware };
    constexpr std::uint32_t kWholeAddress = 32;  // bits
    AdvancedRuleEnd end{};
    if (const auto hardware = ParseHardwareAddress(text)) {
        end.kind = Hardware;
        std::copy(hardware->begin(), hardware->end(), end.hardware);
        return end;
    }
    const std::size_t colon = std::min(text.find(':'), text.size());
    if (colon < text.size()) {
        const auto ports = ParsePorts(text.substr(colon + 1));
        if (!ports) return std::nullopt;
        end.firstPort = ports->first;
        end.lastPort = ports->second;
    }
    const std::string_view host = text.substr(0, colon);
    if (host == "any") return end;
    const std::size_t slash = std::min(host.find('/'), host.size());
    const auto address = ParseIpv4(host.substr(0, slash));
    const auto prefix = slash < host.size() ? ParseNumber32(host.substr(slash + 1)) : kWholeAddress;
    if (!address || !prefix || *prefix > kWholeAddress) return std::nullopt;
    end.kind = Address;
    end.address = *address;
    end.mask = *prefix == 0 ? 0 : SwapAddress(0xFFFFFFFFU << (kWholeAddress - *prefix));
    return end;
}

std::optional<std::uint32_t> ParseRuleProtocol(std::string_view word) {
    if (word == "any") return kAnyProtocol;
    return word == "arp" ? kArp : ParseProtocol(word);
}

// h:mm
std::optional<std::uint16_t> ParseMinute(std::string_view text) {
    const std::size_t colon = std::min(text.find(':'), text.size());
    std::uint32_t hours = 0;
    std::uint32_t minutes = 0;
    const auto read = [](std::string_view part, std::uint32_t& number) {
        const char* const end = part.data() + part.size();
        return std::from_chars(part.data(), end, number).ptr == end && !part.empty();
    };
    if (colon == text.size() || !read(text.substr(0, colon), hours) || !read(text.substr(colon + 1), minutes) ||
        hours > 99) {
        return std::nullopt;
    }
    return static_cast<std::uint16_t>(hours * 60 + minutes);  // past midnight too: a file may hold it
}

// hours=8:00-17:00 dates=20260101-20261231 program=PATH-WITHOUT-BLANKS user=DOMAIN\name disabled logged
void ReadRuleDetails(Words& words, AdvancedRuleRecord& rule) {
    constexpr std::uint32_t kHours = 1;
    constexpr std::uint32_t kDates = 2;
    const auto halves = [](std::string_view text) {
        const std::size_t hyphen = std::min(text.find('-'), text.size());
        return std::pair(text.substr(0, hyphen), text.substr(std::min(hyphen + 1, text.size())));
    };
    while (true) {
        if (const auto hours = words.WordAfter("hours=")) {
            rule.restrictions |= kHours;
            rule.firstMinute = words.Take(ParseMinute(halves(*hours).first));
            rule.lastMinute = words.Take(ParseMinute(halves(*hours).second));
        } else if (const auto dates = words.WordAfter("dates=")) {
            rule.restrictions |= kDates;
            rule.firstDay = words.Take(ParseNumber32(halves(*dates).first));
            rule.lastDay = words.Take(ParseNumber32(halves(*dates).second));
        } else if (const auto program = words.WordAfter("program=")) {
            PutText(rule.program, *program);
        } else if (const auto user = words.WordAfter("user=")) {
            PutText(rule.user, *user);
        } else if (words.WordAfter("disabled")) {
            rule.isEnabled = 0;
        } else if (words.WordAfter("logged")) {
            rule.isLogged = 1;
        } else {
            return;
        }
    }
}

Instruction ReadAdvancedRule(Words& words) {
    constexpr std::pair<std::string_view, std::uint32_t> kActions[] = {{"deny", 0}, {"allow", 1}};
    constexpr std::pair<std::string_view, std::uint32_t> kRoutes[] = {{"both", 0}, {"in", 1}, {"out", 2}};
    AdvancedRuleInstruction rule{};
    rule.record.isEnabled = 1;
    rule.record.action = words.Take(Choose(kActions, words.Word()));
    rule.record.protocol = words.Take(ParseRuleProtocol(words.Word()));
    rule.record.route = words.Take(Choose(kRoutes, words.Word()));
    rule.record.local = words.Take(ParseEnd(words.Word()));
    rule.record.remote = words.Take(ParseEnd(words.Word()));
    ReadRuleDetails(words, rule.record);
    PutText(rule.record.description, words.Text(sizeof(AdvancedRuleRecord::description)));
    return rule;
}

ServiceFile ReadServiceFile(Words& words) {
    constexpr std::pair<std::string_view, ServiceFile> kFiles[] = {{"advanced-rules", ServiceFile::AdvancedRules},
                                                                   {"trusted", ServiceFile::Trusted},
                                                                   {"sites", ServiceFile::Sites}};
    return words.Take(Choose(kFiles, words.Word()));
}

Instruction ReadSpoil(Words& words) {
    constexpr std::pair<std::string_view, Spoiling> kSpoilings[] = {{"cut", Spoiling::Cut},
                                                                    {"tail", Spoiling::Tail},
                                                                    {"same-ids", Spoiling::SameIds},
                                                                    {"no-ids", Spoiling::NoIds},
                                                                    {"unterminated", Spoiling::Unterminated},
                                                                    {"noise", Spoiling::Noise}};
    SpoilInstruction spoil{};
    spoil.file = ReadServiceFile(words);
    spoil.how = words.Take(Choose(kSpoilings, words.Word()));
    return spoil;
}

Instruction ReadFill(Words& words) {
    FillInstruction fill{};
    fill.file = ReadServiceFile(words);
    fill.count = words.Number();
    return fill;
}

}  // namespace

std::optional<Instruction> ReadFileInstruction(std::string_view name, Words& words) {
    if (name == "rule") {
        const RuleAction action = words.Take(ParseRuleAction(words.Word()));
        return RuleInstruction{std::string(words.Text(sizeof(ApplicationRuleRecord::path))), action};
    }
    if (name == "option") {
        const std::uint32_t id = words.Number();
        return OptionInstruction{id, words.Number()};
    }
    if (name == "option-text") {
        const std::uint32_t id = words.Number();
        return OptionTextInstruction{id, std::string(words.OptionalText(sizeof(OptionRecord::text)))};
    }
    if (name == "advanced-rule") return ReadAdvancedRule(words);
    if (name == "trusted") return TrustedInstruction{std::string(words.Text(sizeof(TrustedRecord::longPath)))};
    if (name == "site") return SiteInstruction{std::string(words.Text(sizeof(SiteRecord::name)))};
    if (name == "fill") return ReadFill(words);
    if (name == "spoil") return ReadSpoil(words);
    if (name == "refuse") return RefuseInstruction{words.NumberOr(1)};
    return std::nullopt;
}

}  // namespace brennvar::standin
