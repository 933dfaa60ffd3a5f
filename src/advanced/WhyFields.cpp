#include "advanced/WhyFields.h"

#include "advanced/RuleFields.h"
#include "rules/RuleSentence.h"

namespace brennvar {
namespace {

// Nobody reads it: the dialog names the field.
constexpr Text kNoAddress{177, "Invalid remote IP address!"};

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
    [[nodiscard]] std::string_view TypedIn(WhyField field) const { return WithoutBlanks(TextOf(m_texts, field)); }
    [[nodiscard]] std::optional<WhyField> Wrong() const { return m_wrong; }

private:
    const WhyTexts& m_texts;
    std::optional<WhyField> m_wrong;
};

// One address, of either kind: a network is none.
std::optional<TypedHost> ParseAddress(std::string_view text) {
    const FieldValue<TypedHost> host = ReadHost(text, kNoAddress);
    return host.IsWhole() && !host->mask ? std::optional(*host) : std::nullopt;
}

template <class Value>
std::optional<Value> ValueOf(const FieldValue<Value>& read) {
    return read.IsWhole() ? std::optional(*read) : std::nullopt;
}

std::string AddressText(Ipv4 address, const std::optional<HardwareAddress>& hardware) {
    return address != 0 ? FormatIpv4(address) : hardware ? HardwareText(*hardware) : std::string();
}
std::string PortText(std::uint16_t port) {
    return port == 0 ? std::string() : std::to_string(port);
}

}  // namespace

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
    const auto number = [](std::string_view text) { return ReadNumber(text, 10, 0xFFFFFFFF); };
    const auto port = [](std::string_view text) { return ReadNumber(text, 5, 0xFFFF); };
    const auto day = [](std::string_view text) { return ValueOf(ReadDay(text)); };
    const auto time = [](std::string_view text) { return ValueOf(ReadTime(text)); };
    facts.program = reader.TypedIn(WhyField::Program);
    facts.user = reader.TypedIn(WhyField::User);
    reader.Read(WhyField::Protocol, number, [&](std::uint32_t protocol) { facts.protocol = protocol; });
    reader.Read(WhyField::Direction, number, [&](std::uint32_t direction) {
        facts.direction = direction == 1 ? TrafficDirection::Incoming : TrafficDirection::Outgoing;
    });
    reader.Read(WhyField::RemoteAddress, ParseAddress, [&](const TypedHost& host) {
        facts.remoteAddress = host.address;
        if (host.kind == RuleEnd::Kind::Hardware) facts.remoteHardware = host.hardware;
    });
    reader.Read(WhyField::RemotePort, port,
                [&](std::uint32_t value) { facts.remotePort = static_cast<std::uint16_t>(value); });
    reader.Read(WhyField::LocalAddress, ParseAddress, [&](const TypedHost& host) {
        facts.localAddress = host.address;
        if (host.kind == RuleEnd::Kind::Hardware) facts.localHardware = host.hardware;
    });
    reader.Read(WhyField::LocalPort, port,
                [&](std::uint32_t value) { facts.localPort = static_cast<std::uint16_t>(value); });
    reader.Read(WhyField::Day, day, [&](const LocalDate& value) { question.moment.day = value; });
    reader.Read(WhyField::Time, time, [&](int minute) { question.moment.minute = minute; });
    facts.when = question.moment;
    question.wrong = reader.Wrong();
    return question;
}

}  // namespace brennvar
