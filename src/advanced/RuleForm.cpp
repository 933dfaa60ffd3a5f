#include "advanced/RuleForm.h"

#include <string_view>

#include "advanced/RuleFields.h"
#include "base/DisplayName.h"
#include "rules/RuleMatch.h"
#include "rules/RuleSentence.h"

namespace brennvar {
namespace {

constexpr Text kNoDescription{170, "Description is missing!"};
constexpr Text kMixedEnds{171, "MAC - IP combination is not allowed!"};
constexpr Text kLocalFault{175, "Invalid local IP address!"};
constexpr Text kRemoteFault{177, "Invalid remote IP address!"};
constexpr Text kPortsIgnored{1967, "Ports count for TCP and UDP only."};
constexpr Text kPortsOfSome{2140, "For TCP and UDP; others match in any case."};
constexpr Text kMaskOfAny{1968, "Any address needs no mask."};
constexpr Text kMaskOfHardware{1969, "A hardware address has no mask."};
constexpr Text kMaskIsThere{1970, "The mask stands with the address."};
constexpr Text kDayOrderFault{1974, "The first day is after the last one."};
constexpr Text kNoPath{1975, "The full path of the program is needed."};
constexpr Text kLongPath{1976, "Too long: 259 characters at most."};
constexpr Text kNoDomain{1977, "The domain or computer is missing."};
constexpr Text kLongUser{1978, "Too long: 103 characters at most."};
constexpr Text kLongDescription{1979, "Too long: 255 characters at most."};

struct EndFields {
    RuleField host;
    RuleField mask;
    RuleField ports;
    const Text& invalid;
};
constexpr EndFields kLocal{RuleField::LocalHost, RuleField::LocalMask, RuleField::LocalPorts, kLocalFault};
constexpr EndFields kRemote{RuleField::RemoteHost, RuleField::RemoteMask, RuleField::RemotePorts, kRemoteFault};

void ShowEnd(RuleForm& form, const RuleEnd& end, const EndFields& fields) {
    if (end.kind == RuleEnd::Kind::Hardware) form.texts[fields.host] = HardwareText(end.hardware);
    if (end.kind == RuleEnd::Kind::Ipv4) {
        form.texts[fields.host] = FormatIpv4(end.address);
        if (end.mask != MaskOf(32)) form.texts[fields.mask] = FormatIpv4(end.mask);
    }
    form.texts[fields.ports] = PortsText(end);
}

// Reads what was typed into a check, one part of the rule at a time.
class Checker {
public:
    // A pasted tab or line break counts as a blank: rules have texts of one line.
    explicit Checker(const RuleForm& form) : m_form(form) {
        for (std::size_t i = 0; i < kRuleFieldCount; ++i) BlankControls(m_form.texts[static_cast<RuleField>(i)]);
    }

    RuleCheck Check() {
        AdvancedRule& rule = m_check.rule;
        rule.action = m_form.action;
        rule.protocol = m_form.protocol;
        rule.route = m_form.route;
        rule.isLogged = m_form.isLogged;
        rule.isEnabled = m_form.isEnabled;
        rule.local = ReadEnd(kLocal);
        rule.remote = ReadEnd(kRemote);
        ForbidMixedEnds();
        ReadProgram();
        ReadUser();
        ReadHours();
        ReadDates();
        ReadDescription();
        return std::move(m_check);
    }

private:
    [[nodiscard]] std::string_view Typed(RuleField field) const { return m_form.texts[field]; }
    void Blame(RuleField field, const Text& fault) { m_check.faults[field] = fault; }

    // The value, or the default when something is wrong, which is noted.
    template <class Value>
    Value Take(RuleField field, const FieldValue<Value>& read) {
        if (!read.IsWhole()) Blame(field, read.Fault());
        return *read;
    }

    RuleEnd ReadEnd(const EndFields& fields) {
        const FieldValue<TypedHost> read = ReadHost(Typed(fields.host), fields.invalid);
        const TypedHost host = Take(fields.host, read);
        RuleEnd end{.kind = host.kind, .address = host.address, .hardware = host.hardware};
        if (read.IsWhole() && host.kind == RuleEnd::Kind::Any) m_check.ignored[fields.mask] = kMaskOfAny;
        if (host.kind == RuleEnd::Kind::Hardware) m_check.ignored[fields.mask] = kMaskOfHardware;
        if (host.mask) {
            m_check.ignored[fields.mask] = kMaskIsThere;
            end.mask = *host.mask;
        } else if (host.kind == RuleEnd::Kind::Ipv4) {
            const FieldValue<Ipv4> mask = ReadMask(Typed(fields.mask));
            if (mask.IsWhole())
                end.mask = *mask;
            else
                Blame(fields.mask, mask.Fault());
        }
        const FieldValue<PortRange> ports = ReadPorts(Typed(fields.ports), m_form.protocol);
        end.firstPort = ports->first;
        end.lastPort = ports->last;
        if (!AsksForPorts(m_form.protocol))
            m_check.ignored[fields.ports] = kPortsIgnored;
        else if (!ports.IsWhole())
            Blame(fields.ports, ports.Fault());
        else if (!HasPorts(m_form.protocol) && end.HasPortRange())
            m_check.hints[fields.ports] = kPortsOfSome;
        return end;
    }

    void ForbidMixedEnds() {
        using Kind = RuleEnd::Kind;
        const Kind local = m_check.rule.local.kind;
        const Kind remote = m_check.rule.remote.kind;
        const bool isMixed =
            (local == Kind::Hardware && remote == Kind::Ipv4) || (local == Kind::Ipv4 && remote == Kind::Hardware);
        if (!isMixed) return;
        Blame(RuleField::RemoteHost, kMixedEnds);
        m_check.rule.remote = {.firstPort = m_check.rule.remote.firstPort,
                               .lastPort = m_check.rule.remote.lastPort};
    }

    void ReadProgram() {
        // A copied path often stands in quotes.
        std::string_view path = WithoutBlanks(Typed(RuleField::Program));
        if (path.size() >= 2 && path.front() == '"' && path.back() == '"') path = path.substr(1, path.size() - 2);
        if (path.size() > kLongestRuleProgram) return Blame(RuleField::Program, kLongPath);
        if (!path.empty() && path.find('\\') == std::string_view::npos) return Blame(RuleField::Program, kNoPath);
        m_check.rule.program = path;
    }

    void ReadUser() {
        const std::string_view user = WithoutBlanks(Typed(RuleField::User));
        if (user.size() > kLongestRuleUser) return Blame(RuleField::User, kLongUser);
        const std::size_t sign = user.find('\\');
        const bool hasDomain = sign != std::string_view::npos && sign > 0 && sign + 1 < user.size();
        if (!user.empty() && !hasDomain) return Blame(RuleField::User, kNoDomain);
        m_check.rule.user = user;
    }

    void ReadHours() {
        if (!m_form.hasHours) return;
        const std::uint16_t first = Take(RuleField::FirstTime, ReadTime(Typed(RuleField::FirstTime)));
        const std::uint16_t last = Take(RuleField::LastTime, ReadTime(Typed(RuleField::LastTime)));
        if (HasFault(RuleField::FirstTime) || HasFault(RuleField::LastTime)) return;
        m_check.rule.hours = RuleHours{.first = first, .last = last};
    }

    void ReadDates() {
        if (!m_form.hasDates) return;
        const LocalDate first = Take(RuleField::FirstDay, ReadDay(Typed(RuleField::FirstDay)));
        const LocalDate last = Take(RuleField::LastDay, ReadDay(Typed(RuleField::LastDay)));
        if (HasFault(RuleField::FirstDay) || HasFault(RuleField::LastDay)) return;
        const auto number = [](const LocalDate& day) { return (day.year * 100 + day.month) * 100 + day.day; };
        if (number(first) > number(last)) return Blame(RuleField::LastDay, kDayOrderFault);
        m_check.rule.dates = RuleDates{.first = first, .last = last};
    }

    void ReadDescription() {
        const std::string_view text = Typed(RuleField::Description);
        if (WithoutBlanks(text).empty()) return Blame(RuleField::Description, kNoDescription);
        if (text.size() > kLongestRuleDescription) return Blame(RuleField::Description, kLongDescription);
        m_check.rule.description = text;
    }

    [[nodiscard]] bool HasFault(RuleField field) const { return m_check.faults[field].number != 0; }

    RuleForm m_form;
    RuleCheck m_check;
};

}  // namespace

std::optional<RuleField> RuleCheck::FirstFault() const {
    for (std::size_t i = 0; i < kRuleFieldCount; ++i) {
        const auto field = static_cast<RuleField>(i);
        if (faults[field].number != 0) return field;
    }
    return std::nullopt;
}

bool RuleCheck::IsReadable() const {
    const auto first = FirstFault();
    return !first || *first == RuleField::Description;  // which is the last one
}

RuleForm RuleFormOf(const AdvancedRule& rule) {
    RuleForm form{.action = rule.action,
                  .protocol = rule.protocol,
                  .route = rule.route,
                  .hasHours = rule.hours.has_value(),
                  .hasDates = rule.dates.has_value(),
                  .isLogged = rule.isLogged,
                  .isEnabled = rule.isEnabled};
    ShowEnd(form, rule.local, kLocal);
    ShowEnd(form, rule.remote, kRemote);
    form.texts[RuleField::Program] = rule.program;
    form.texts[RuleField::User] = rule.user;
    form.texts[RuleField::Description] = rule.description;
    if (rule.hours) {
        form.texts[RuleField::FirstTime] = TimeText(rule.hours->first);
        form.texts[RuleField::LastTime] = TimeText(rule.hours->last);
    }
    if (rule.dates) {
        form.texts[RuleField::FirstDay] = DateText(rule.dates->first);
        form.texts[RuleField::LastDay] = DateText(rule.dates->last);
    }
    return form;
}

RuleCheck CheckRuleForm(const RuleForm& form) {
    return Checker(form).Check();
}

bool CanBeLookedUp(const RuleForm& form, RuleField host) {
    return IsHostName(form.texts[host]);
}

}  // namespace brennvar
