#include "advanced/RuleForm.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>

#include "advanced/RuleFields.h"

namespace brennvar {
namespace {

using enum RuleField;
using Kind = RuleEnd::Kind;

Ipv4 Address(const char* text) {
    return ParseIpv4(text).value();
}

RuleForm WholeForm() {
    RuleForm form{.protocol = RuleProtocol::Tcp};
    form.texts[Description] = "One";
    return form;
}

// The rule that comes of one text in an otherwise empty form, which has to be whole.
AdvancedRule RuleWith(RuleField field, const std::string& text, RuleForm form = WholeForm()) {
    form.texts[field] = text;
    const RuleCheck check = CheckRuleForm(form);
    EXPECT_FALSE(check.FirstFault()) << text << ": "
                                     << check.faults[check.FirstFault().value_or(LocalHost)].english;
    return check.rule;
}

TEST(RuleFormTest, ReadsHostsInEverySpelling) {
    const Ipv4 one = MaskOf(32);
    const HardwareAddress hardware{0x02, 0, 0, 0xAB, 0xCD, 0xEF};
    struct Row {
        const char* typed;
        RuleEnd end;
    };
    const Row rows[] = {
        {" any ", {}},
        {"192.0.2.1", {.kind = Kind::Ipv4, .address = Address("192.0.2.1"), .mask = one}},
        {"\t192.0.2.5/24 ",
         {.kind = Kind::Ipv4, .address = Address("192.0.2.5"), .mask = Address("255.255.255.0")}},
        {"192.0.2.0 255.255.255.0",
         {.kind = Kind::Ipv4, .address = Address("192.0.2.0"), .mask = Address("255.255.255.0")}},
        {"192.0.2.0 / 255.255.254.0",
         {.kind = Kind::Ipv4, .address = Address("192.0.2.0"), .mask = Address("255.255.254.0")}},
        {"192.0.2.0-192.0.2.255",
         {.kind = Kind::Ipv4, .address = Address("192.0.2.0"), .mask = Address("255.255.255.0")}},
        {"192.0.2.4 - 192.0.2.7",
         {.kind = Kind::Ipv4, .address = Address("192.0.2.4"), .mask = Address("255.255.255.252")}},
        {"0.0.0.0-255.255.255.255", {.kind = Kind::Ipv4, .address = 0, .mask = 0}},
        {"02:00:00:ab:CD:ef", {.kind = Kind::Hardware, .hardware = hardware}},
        {"02-00-00-AB-cd-EF", {.kind = Kind::Hardware, .hardware = hardware}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(RuleWith(LocalHost, row.typed).local, row.end) << row.typed;
        EXPECT_EQ(RuleWith(RemoteHost, row.typed).remote, row.end) << row.typed;
    }
    RuleForm form = WholeForm();
    form.texts[RemoteHost] = "192.0.2.0";
    for (const char* mask : {"255.255.255.0", "/24", "24", " / 24"}) {
        EXPECT_EQ(RuleWith(RemoteMask, mask, form).remote.mask, Address("255.255.255.0")) << mask;
    }
}

TEST(RuleFormTest, ReadsPortsProgramsUsersAndTimes) {
    struct Row {
        const char* typed;
        std::uint16_t first;
        std::uint16_t last;
    };
    const Row rows[] = {{"any", 0, 0},           {"80", 80, 80},      {" 80 - 88 ", 80, 88}, {"0-65535", 0, 65535},
                        {"65535", 65535, 65535}, {"HTTPS", 443, 443}, {"netbios", 137, 139}, {"ftp", 21, 21}};
    for (const Row& row : rows) {
        const RuleEnd end = RuleWith(RemotePorts, row.typed).remote;
        EXPECT_EQ(end.firstPort, row.first) << row.typed;
        EXPECT_EQ(end.lastPort, row.last) << row.typed;
        EXPECT_EQ(RuleWith(LocalPorts, row.typed).local.lastPort, row.last) << row.typed;
    }
    EXPECT_EQ(RuleWith(Program, R"( "C:\Program Files\a.exe" )").program, R"(C:\Program Files\a.exe)");
    EXPECT_EQ(RuleWith(User, R"( HOME\fred )").user, R"(HOME\fred)");
    const std::string path = "C:\\" + std::string(256, 'a');
    EXPECT_EQ(RuleWith(Program, path).program, path);
    const std::string user = "A\\" + std::string(101, 'b');
    EXPECT_EQ(RuleWith(User, user).user, user);
    EXPECT_EQ(RuleWith(Description, "a\tb\r\nc").description, "a b  c");

    RuleForm form = WholeForm();
    form.hasHours = form.hasDates = true;
    form.texts[FirstTime] = "22.30";
    form.texts[LastTime] = "6";  // over midnight
    form.texts[FirstDay] = "29.2.2028";
    form.texts[LastDay] = "2028/02/29";
    const AdvancedRule rule = RuleWith(LocalHost, "", form);
    EXPECT_EQ(rule.hours, (RuleHours{.first = 22 * 60 + 30, .last = 6 * 60}));
    EXPECT_EQ(rule.dates, (RuleDates{.first = {2028, 2, 29}, .last = {2028, 2, 29}}));
    form.hasHours = form.hasDates = false;
    form.texts[FirstTime] = form.texts[LastDay] = "rubbish";  // counts for nothing
    EXPECT_EQ(RuleWith(LocalHost, "", form).hours, std::nullopt);
}

TEST(RuleFormTest, SaysWhatIsWrongWithAField) {
    struct Row {
        RuleField field;
        std::string typed;
        const char* fault;
        RuleProtocol protocol = RuleProtocol::Tcp;
    };
    constexpr const char* kMask = "A mask looks like 255.255.255.0 or /24.";
    constexpr const char* kPorts = "Ports look like 80 or 80-88, from 1 to 65535.";
    constexpr const char* kService = "No service of this protocol has this name.";
    constexpr const char* kTime = "A time looks like 8:00, from 0:00 to 23:59.";
    constexpr const char* kDay = "A day looks like 2026-12-24.";
    constexpr const char* kNoDay = "The calendar does not have this day.";
    const Row rows[] = {
        {LocalHost, "192.0.2.256", "Invalid local IP address!"},
        {RemoteHost, "192.0.2", "Invalid remote IP address!"},
        {RemoteHost, "02:00:00:AB:CD-EF", "Invalid remote IP address!"},
        {RemoteHost, "192.0.2.1-", "Invalid remote IP address!"},
        {RemoteHost, std::string(254, 'a'), "Invalid remote IP address!"},
        {RemoteHost, "www.example.com", "A name has to be looked up first."},
        {RemoteHost, "192.0.2.0/33", kMask},
        {RemoteHost, "192.0.2.0 255.0.255.0", kMask},
        {RemoteHost, "192.0.2.9-192.0.2.5", "The first address is above the last one."},
        {RemoteHost, "192.0.2.4-192.0.2.6", "These addresses are not one mask: use several rules."},
        {RemoteHost, "192.0.2.2-192.0.2.5", "These addresses are not one mask: use several rules."},
        {RemoteMask, "255.0.255.0", kMask},
        {LocalPorts, "0", kPorts},
        {RemotePorts, "65536", kPorts},
        {RemotePorts, "88-80", "The first port is above the last one."},
        {RemotePorts, "nothing", kService},
        {RemotePorts, "ftp", kService, RuleProtocol::Udp},
        {Program, "browser.exe", "The full path of the program is needed."},
        {Program, "C:\\" + std::string(257, 'a'), "Too long: 259 characters at most."},
        {User, "fred", "The domain or computer is missing."},
        {User, "HOME\\", "The domain or computer is missing."},
        {User, "A\\" + std::string(102, 'b'), "Too long: 103 characters at most."},
        {FirstTime, "24:00", kTime},
        {LastTime, "8:60", kTime},
        {FirstDay, "12/24/2026", kDay},
        {FirstDay, "2026-02-29", kNoDay},
        {LastDay, "2026-00-10", kNoDay},
        {LastDay, "2026-12-23", "The first day is after the last one."},
        {Description, "", "Description is missing!"},
        {Description, std::string(256, 'd'), "Too long: 255 characters at most."},
    };
    for (const Row& row : rows) {
        RuleForm form = WholeForm();
        form.protocol = row.protocol;
        form.hasHours = form.hasDates = true;
        form.texts[FirstTime] = form.texts[LastTime] = "8:00";
        form.texts[FirstDay] = form.texts[LastDay] = "2026-12-24";
        if (row.field == RemoteMask) form.texts[RemoteHost] = "192.0.2.1";
        if (row.field == LocalMask) form.texts[LocalHost] = "192.0.2.1";
        form.texts[row.field] = row.typed;
        const RuleCheck check = CheckRuleForm(form);
        EXPECT_EQ(check.FirstFault(), row.field) << row.typed;
        EXPECT_EQ(check.faults[row.field].english, row.fault) << row.typed;
        EXPECT_EQ(check.IsReadable(), row.field == Description) << row.typed;
    }
}

TEST(RuleFormTest, RefusesHardwareAddressesBesideIpAddresses) {
    constexpr const char* kHardware = "02:00:00:AB:CD:EF";
    const std::tuple<const char*, const char*, int> rows[] = {{kHardware, "192.0.2.1", 171},
                                                              {"192.0.2.0/24", kHardware, 171},
                                                              {kHardware, kHardware, 0},
                                                              {kHardware, "", 0},
                                                              {"any", kHardware, 0}};
    for (const auto& [local, remote, fault] : rows) {
        RuleForm form = WholeForm();
        form.texts[LocalHost] = local;
        form.texts[RemoteHost] = remote;
        EXPECT_EQ(CheckRuleForm(form).faults[RemoteHost].number, fault) << local << " " << remote;
    }
}

TEST(RuleFormTest, SaysWhyAFieldMeansNothing) {
    struct Row {
        RuleField field;
        const char* host;
        RuleProtocol protocol;
        const char* reason;
    };
    constexpr const char* kPorts = "Ports count for TCP and UDP only.";
    const Row rows[] = {
        {RemotePorts, "", RuleProtocol::Udp, ""},
        {LocalPorts, "", RuleProtocol::Arp, kPorts},
        {RemotePorts, "", RuleProtocol::Icmp, kPorts},
        {RemotePorts, "", RuleProtocol::Any, ""},
        {RemoteMask, "", RuleProtocol::Tcp, "Any address needs no mask."},
        {RemoteMask, "02:00:00:AB:CD:EF", RuleProtocol::Tcp, "A hardware address has no mask."},
        {LocalMask, "192.0.2.0/24", RuleProtocol::Tcp, "The mask stands with the address."},
        {LocalMask, "192.0.2.", RuleProtocol::Tcp, ""},
    };
    for (const Row& row : rows) {
        RuleForm form = WholeForm();
        form.protocol = row.protocol;
        form.texts[row.field < RemoteHost ? LocalHost : RemoteHost] = row.host;
        form.texts[row.field] = "1.2";  // no mask and no port
        const RuleCheck check = CheckRuleForm(form);
        EXPECT_EQ(check.ignored[row.field].english, row.reason) << row.host;
        const bool isBlamed = check.faults[row.field].number != 0;
        EXPECT_EQ(isBlamed, *row.reason == '\0' && std::string(row.host) != "192.0.2.") << row.host;
    }
}

TEST(RuleFormTest, OffersToLookUpWhatCanBeAName) {
    RuleForm form;
    for (const auto& [typed, isName] :
         {std::pair("www.example.com", true), std::pair(" a-b_1 ", true), std::pair("1a", true),
          std::pair("1.2.3.400", false), std::pair("1-2", false), std::pair("any", false), std::pair("", false),
          std::pair("a b", false), std::pair("a\\b", false), std::pair("02-00-00-AB-CD-EF", false)}) {
        form.texts[RemoteHost] = typed;
        EXPECT_EQ(CanBeLookedUp(form, RemoteHost), isName) << typed;
    }
}

RuleEnd RandomEnd(std::mt19937& random, Kind kind) {
    RuleEnd end{.kind = kind};
    if (kind == Kind::Ipv4) {
        end.address = static_cast<Ipv4>(random());
        end.mask = MaskOf(static_cast<int>(random() % 33));
    }
    if (kind == Kind::Hardware) {
        for (std::uint8_t& byte : end.hardware) byte = static_cast<std::uint8_t>(random());
    }
    if (random() % 2 == 0) {
        end.lastPort = static_cast<std::uint16_t>(1 + random() % 65535);
        end.firstPort = static_cast<std::uint16_t>(random() % (end.lastPort + 1U));
    }
    return end;
}

TEST(RuleFormTest, LeavesARuleAsItIs) {
    std::mt19937 random(20261124);
    constexpr RuleProtocol kProtocols[] = {RuleProtocol::Ip,  RuleProtocol::Icmp, RuleProtocol::Tcp,
                                           RuleProtocol::Udp, RuleProtocol::Arp,  RuleProtocol::Any};
    const auto isOn = [&] { return random() % 2 == 0; };
    for (int i = 0; i < 2000; ++i) {
        const Kind kind = isOn() ? Kind::Ipv4 : Kind::Hardware;
        AdvancedRule rule{.action = isOn() ? AdvancedAction::Allow : AdvancedAction::Deny,
                          .isEnabled = isOn(),
                          .protocol = kProtocols[random() % std::size(kProtocols)],
                          .route = static_cast<RuleRoute>(random() % 3),
                          .local = RandomEnd(random, isOn() ? kind : Kind::Any),
                          .remote = RandomEnd(random, isOn() ? kind : Kind::Any),
                          .isLogged = isOn(),
                          .description = std::string(1 + random() % kLongestRuleDescription, 'd')};
        if (isOn()) {
            rule.hours = {.first = static_cast<std::uint16_t>(random() % kMinutesPerDay),
                          .last = static_cast<std::uint16_t>(random() % kMinutesPerDay)};
        }
        if (isOn())
            rule.dates = {.first = {2026, 2, 28}, .last = {2026 + static_cast<int>(random() % 7000), 12, 31}};
        if (isOn()) rule.program = R"(C:\)" + std::string(random() % 257, 'p');
        if (isOn()) rule.user = R"(D\)" + std::string(1 + random() % 101, 'u');
        const RuleCheck check = CheckRuleForm(RuleFormOf(rule));
        ASSERT_FALSE(check.FirstFault()) << i;
        ASSERT_EQ(check.rule, rule) << i;
    }
}

}  // namespace
}  // namespace brennvar
