#include "views/OptionSections.h"

#include <utility>
#include "commands/CommandTable.h"

#include "config/OptionTable.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

using Rows = std::vector<RowInfo>;

// Wide enough for a label and a field.
constexpr int kFieldColumn = 264;
// For check boxes alone, whose captions may take two lines.
constexpr int kFlagColumn = 192;
constexpr int kIcmpColumn = 160;

constexpr RowInfo Heading(Text text, int column = 0) {
    return {RowKind::Heading, 0, text, column};
}

RowInfo Option(RowKind kind, OptionId id, int column = 0) {
    return {kind, ControlOf(id), FindOption(static_cast<std::uint32_t>(id))->caption, column};
}

Rows General() {
    return {Option(RowKind::Flag, OptionId::ShowSecurityMessages),
            Option(RowKind::Flag, OptionId::ShowBlockedMessages),
            Option(RowKind::Flag, OptionId::LoadAtStartup),
            {RowKind::Button, IDM_RESET, Text{610, "Reset"}},
            {RowKind::Button, IDM_RESET_TRUSTED, Text{580, "Reset Trusted"}}};
}

Rows Enhancements() {
    Rows rows;
    for (const OptionId id :
         {OptionId::IntrusionPrevention, OptionId::NetBiosProtection, OptionId::BlockPlugAndPlay,
          OptionId::MasqueradeFingerprint, OptionId::FingerprintAuthentication, OptionId::AntiMacSpoofing,
          OptionId::AntiDnsSpoofing, OptionId::AntiIpSpoofing, OptionId::BlockAttacker}) {
        rows.push_back(Option(RowKind::Flag, id));
    }
    rows.push_back(Option(RowKind::NumberOfFlag, OptionId::BlockSeconds));
    for (const OptionId id : {OptionId::BlockFragments, OptionId::DetectPortScan, OptionId::DetectDos,
                              OptionId::LocalTraffic, OptionId::TimeSynchronisation, OptionId::Dhcp, OptionId::Dns,
                              OptionId::ProcessDefense, OptionId::AppInitProtection}) {
        rows.push_back(Option(RowKind::Flag, id, 1));
    }
    rows.push_back({RowKind::Button, IDM_RESET_FINGERPRINTS, Text{392, "Reset fingerprints"}, 1});
    return rows;
}

Rows Logging() {
    return {Heading(Text{1206, "Logs"}),
            Option(RowKind::Flag, OptionId::SecurityLog),
            Option(RowKind::Flag, OptionId::SystemLog),
            Option(RowKind::Flag, OptionId::TrafficLog),
            Option(RowKind::Flag, OptionId::PacketLog),
            Option(RowKind::Number, OptionId::TrafficLogKilobytes),
            Option(RowKind::Number, OptionId::PacketLogKilobytes),
            Option(RowKind::Number, OptionId::LogDays),
            {RowKind::Button, IDM_DELETE_LOGS, Text{1217, "Delete logs..."}},
            Heading(Text{1207, "E-mail notification"}, 1),
            Option(RowKind::Flag, OptionId::MailNotification, 1),
            Option(RowKind::Text, OptionId::MailFrom, 1),
            Option(RowKind::Text, OptionId::MailTo, 1),
            Option(RowKind::Text, OptionId::MailCc, 1),
            Option(RowKind::Text, OptionId::MailSubject, 1),
            Option(RowKind::Text, OptionId::MailServer, 1),
            Option(RowKind::Text, OptionId::MailLogin, 1),
            Option(RowKind::Password, OptionId::MailPassword, 1),
            {RowKind::Button, IDM_TEST_MAIL, Text{401, "Test E-Mail"}, 1}};
}

Rows Miscellaneous() {
    return {Heading(Text{1208, "Updates"}),
            Option(RowKind::Flag, OptionId::NotifyNewVersion),
            Option(RowKind::Flag, OptionId::UpdateSignatures),
            {RowKind::Button, IDM_UPDATE, Text{404, "Update"}},
            Heading(Text{1209, "Proxy"}, 1),
            Option(RowKind::List, OptionId::ProxyType, 1),
            Option(RowKind::Text, OptionId::ProxyHost, 1),
            Option(RowKind::Port, OptionId::ProxyPort, 1),
            Option(RowKind::Text, OptionId::ProxyLogin, 1),
            Option(RowKind::Password, OptionId::ProxyPassword, 1)};
}

Rows Icmp() {
    Rows rows{Heading(Text{1204, "Incoming"}), Heading(Text{1205, "Outgoing"}, 1)};
    for (const OptionInfo& option : OptionTable()) {
        if (option.group != OptionGroup::Icmp) continue;
        rows.push_back(Option(RowKind::Flag, option.id, option.id >= OptionId::IcmpOutgoingFirst ? 1 : 0));
    }
    return rows;
}

Rows FileSharing() {
    return {Option(RowKind::Flag, OptionId::BlockFileSharing),
            Option(RowKind::Flag, OptionId::BlockNetworkNeighborhood)};
}

Rows BrowserFiltering() {
    return {{RowKind::Flag, IDC_FILTER_SITE_CONTROL, Text{597, "Enable Site Control System"}},
            {RowKind::Flag, IDC_FILTER_ADS, Text{598, "Enable Ad Blocking"}},
            {RowKind::Flag, IDC_FILTER_ACTIVEX, Text{599, "Enable ActiveX Blocking"}},
            {RowKind::Flag, IDC_FILTER_REFERRER, Text{600, "Enable Referrer Blocking"}},
            {RowKind::Flag, IDC_FILTER_COOKIES, Text{601, "Enable Cookies Blocking"}},
            Option(RowKind::Port, OptionId::FilteringProxyPort)};
}

Rows Resources() {
    return {Heading(Text{342, "Skins/Languages:"}),
            {RowKind::List, IDC_OPTIONS_SKIN, Text{343, "Active skin:"}},
            {RowKind::List, IDC_OPTIONS_LANGUAGE, Text{344, "Active language:"}}};
}

Rows Password() {
    return {{RowKind::Line, 0, Text{341, "Protects your security settings from being changed."}},
            {RowKind::Button, IDM_SET_PASSWORD, Text{370, "Set Password"}}};
}

std::vector<SectionInfo> MakeSections() {
    using Kind = SectionInfo::Kind;
    const auto options = [](OptionGroup group, int columnWidth, Rows rows) {
        return SectionInfo{Kind::Options, InfoOf(CommandOf(group)).subject, group, columnWidth, std::move(rows)};
    };
    return {options(OptionGroup::General, kFieldColumn, General()),
            options(OptionGroup::Enhancements, kFlagColumn, Enhancements()),
            options(OptionGroup::Logging, kFieldColumn, Logging()),
            options(OptionGroup::Miscellaneous, kFieldColumn, Miscellaneous()),
            options(OptionGroup::Icmp, kIcmpColumn, Icmp()),
            options(OptionGroup::FileSharing, kFieldColumn, FileSharing()),
            {Kind::BrowserFiltering, Text{1202, "Browser filtering"}, OptionGroup::None, kFieldColumn,
             BrowserFiltering()},
            {Kind::Resources, Text{1203, "Skins and languages"}, OptionGroup::None, kFieldColumn, Resources()},
            {Kind::Password, Text{197, "Password"}, OptionGroup::None, kFieldColumn, Password()}};
}

constexpr FilterFlag kFilterFlags[] = {{IDC_FILTER_SITE_CONTROL, kUserValueSiteControl},
                                       {IDC_FILTER_ADS, kUserValueAdBlocking},
                                       {IDC_FILTER_ACTIVEX, kUserValueActiveXBlocking},
                                       {IDC_FILTER_REFERRER, kUserValueReferrerBlocking},
                                       {IDC_FILTER_COOKIES, kUserValueCookiesBlocking}};

}  // namespace

std::span<const SectionInfo> OptionSections() {
    static const std::vector<SectionInfo> sections = MakeSections();
    return sections;
}

std::span<const FilterFlag> FilterFlags() {
    return kFilterFlags;
}

}  // namespace brennvar
