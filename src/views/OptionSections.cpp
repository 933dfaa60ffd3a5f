#include "views/OptionSections.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "commands/CommandTable.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

// Wide enough for a label and a field.
constexpr int kFieldColumn = 264;
// For check boxes alone, whose captions may take two lines.
constexpr int kFlagColumn = 192;
constexpr int kIcmpColumn = 160;

constexpr FilterFlag kFilterFlags[] = {
    {IDC_FILTER_SITE_CONTROL, kUserValueSiteControl, Text{597, "Enable Site Control System"}},
    {IDC_FILTER_ADS, kUserValueAdBlocking, Text{598, "Enable Ad Blocking"}},
    {IDC_FILTER_ACTIVEX, kUserValueActiveXBlocking, Text{599, "Enable ActiveX Blocking"}},
    {IDC_FILTER_REFERRER, kUserValueReferrerBlocking, Text{600, "Enable Referrer Blocking"}},
    {IDC_FILTER_COOKIES, kUserValueCookiesBlocking, Text{601, "Enable Cookies Blocking"}},
};

int Control(std::uint32_t id) {
    return ControlOf(OptionId{id});
}

// Puts a section together, row by row.
class Section {
public:
    explicit Section(OptionGroup group, int columnWidth = kFieldColumn)
        : m_info{.kind = SectionInfo::Kind::Options,
                 .caption = InfoOf(CommandOf(group)).subject,
                 .group = group,
                 .columnWidth = columnWidth,
                 .rows = {}} {}
    Section(SectionInfo::Kind kind, const Text& caption, OptionGroup group = OptionGroup::None)
        : m_info{.kind = kind, .caption = caption, .group = group, .columnWidth = kFieldColumn, .rows = {}} {}

    Section& Heading(const Text& text, int column = 0) { return Add({RowKind::Heading, 0, text, column}); }
    Section& Remark(const Text& text) { return Add({RowKind::Remark, 0, text}); }
    Section& Button(int command, const Text& text, int column = 0) {
        return Add({RowKind::Button, command, text, column});
    }
    Section& Action(int control, const Text& text, int column = 0) {
        return Add({RowKind::Action, control, text, column});
    }
    // The button that was added last stands on the right of the one before.
    Section& Beside() {
        m_info.rows.back().isBeside = true;
        return *this;
    }
    // What the button that was added last does cannot be undone.
    Section& Destroys() {
        m_info.rows.back().destroys = true;
        return *this;
    }
    // These can be worked with only while one of the flags is on.
    Section& Need(std::initializer_list<int> flags, std::initializer_list<int> controls) {
        for (RowInfo& row : m_info.rows) {
            if (std::find(controls.begin(), controls.end(), row.control) != controls.end()) row.needs = flags;
        }
        return *this;
    }
    Section& List(int control, int column = 0) { return Add({RowKind::List, control, {}, column}); }
    Section& Field(OptionKind kind, int control, const Text& text) {
        return Add({RowKind::Field, control, text, 0, kind});
    }
    Section& Option(const OptionInfo& option) {
        return Add({RowKind::Field, ControlOf(option.id), option.caption, option.column, option.kind});
    }
    Section& These(std::initializer_list<std::uint32_t> ids, int column = 0) {
        for (const std::uint32_t id : ids) {
            Option(*FindOption(id));
            m_info.rows.back().column = column;
        }
        return *this;
    }
    // What the table has for this column and is not here yet.
    Section& Options(int column = 0) {
        for (const OptionInfo& option : OptionTable()) {
            if (option.group == m_info.group && option.column == column && !Has(ControlOf(option.id)))
                Option(option);
        }
        return *this;
    }
    [[nodiscard]] SectionInfo Made() const { return m_info; }

private:
    Section& Add(const RowInfo& row) {
        m_info.rows.push_back(row);
        return *this;
    }
    [[nodiscard]] bool Has(int control) const {
        return std::any_of(m_info.rows.begin(), m_info.rows.end(),
                           [control](const RowInfo& row) { return row.control == control; });
    }

    SectionInfo m_info;
};

std::vector<SectionInfo> MakeSections() {
    using Kind = SectionInfo::Kind;
    Section filtering(Kind::BrowserFiltering, Text{1202, "Browser filtering"}, OptionGroup::BrowserFiltering);
    for (const FilterFlag& flag : kFilterFlags) filtering.Field(OptionKind::Flag, flag.control, flag.caption);
    return {Section(OptionGroup::General)
                .Options()
                .Heading(Text{610, "Reset"})
                .Remark(Text{2303, "Brings all options back to their first values. This cannot be undone."})
                .Button(IDM_RESET, Text{610, "Reset"})
                .Destroys()
                .Made(),
            Section(OptionGroup::Enhancements, kFlagColumn)
                .Heading(Text{2250, "Attack detection"})
                .These({8, 20, 21, 17, 18})
                .Need({Control(17)}, {Control(18)})
                .Heading(Text{2251, "Identity and spoofing"})
                .These({12, 13, 14, 15, 16})
                .Button(IDM_RESET_FINGERPRINTS, Text{392, "Reset fingerprints"})
                .Heading(Text{2252, "Allowed and blocked traffic"}, 1)
                .These({22, 24, 25, 23, 9, 11, 19}, 1)
                .Heading(Text{2253, "Processes"}, 1)
                .These({26, 78}, 1)
                .Made(),
            Section(OptionGroup::Logging)
                .Heading(Text{1206, "Logs"})
                .Options()
                .Need({Control(29)}, {Control(31)})
                .Need({Control(30)}, {Control(32)})
                .Button(IDM_DELETE_LOGS, Text{1217, "Delete logs..."})
                .Destroys()
                .Heading(Text{1207, "E-mail notification"}, 1)
                .Options(1)
                .Button(IDM_TEST_MAIL, Text{401, "Test E-Mail"}, 1)
                .Need({Control(34)}, {Control(35), Control(36), Control(37), Control(38), Control(39), Control(40),
                                      Control(41), IDM_TEST_MAIL})
                .Button(IDM_TEST_MAIL_HERE, Text{1795, "Send a test from here..."}, 1)
                .Made(),
            Section(OptionGroup::Miscellaneous)
                .Heading(Text{1208, "Updates"})
                .Options()
                .Button(IDM_UPDATE, Text{404, "Update"})
                .Heading(Text{1209, "Proxy"}, 1)
                .Option(*FindOption(static_cast<std::uint32_t>(OptionId::ProxyType)))  // what the others are for
                .Options(1)
                .Made(),
            Section(OptionGroup::Icmp, kIcmpColumn)
                .Heading(Text{1204, "Incoming"})
                .Options()
                .Heading(Text{1205, "Outgoing"}, 1)
                .Options(1)
                .Made(),
            Section(OptionGroup::FileSharing).Options().Made(),
            filtering.Options()
                .Need({IDC_FILTER_SITE_CONTROL, IDC_FILTER_ADS, IDC_FILTER_ACTIVEX, IDC_FILTER_REFERRER,
                       IDC_FILTER_COOKIES},
                      {Control(79)})
                .Heading(Text{2123, "Filtered sites"}, 1)
                .List(IDC_SITES_LIST, 1)
                .Action(IDC_SITES_ADD, Text{2070, "Add..."}, 1)
                .Action(IDC_SITES_REMOVE, Text{406, "Remove"}, 1)
                .Destroys()
                .Beside()
                .Made(),
            Section(Kind::Nothing, Text{2110, "Trusted programs"})
                .Remark(Text{
                    2125, "These programs may act on other programs and start the web browser without a question."})
                .List(IDC_TRUSTED_LIST)
                .Action(IDC_TRUSTED_ADD, Text{2070, "Add..."})
                .Button(IDM_RESET_TRUSTED, Text{580, "Reset Trusted"})
                .Destroys()
                .Beside()
                .Made(),
            Section(Kind::Resources, Text{1203, "Skins and languages"})
                .Heading(Text{342, "Skins/Languages:"})
                .Field(OptionKind::List, IDC_OPTIONS_SKIN, Text{343, "Active skin:"})
                .Field(OptionKind::List, IDC_OPTIONS_LANGUAGE, Text{344, "Active language:"})
                .Made(),
            Section(Kind::Nothing, Text{197, "Password"})
                .Remark(Text{341, "Protects your security settings from being changed."})
                .Button(IDM_SET_PASSWORD, Text{370, "Set Password"})
                .Made()};
}

}  // namespace

int SectionInfo::List() const {
    const auto list =
        std::find_if(rows.begin(), rows.end(), [](const RowInfo& row) { return row.kind == RowKind::List; });
    return list == rows.end() ? 0 : list->control;
}

std::span<const SectionInfo> OptionSections() {
    static const std::vector<SectionInfo> sections = MakeSections();
    return sections;
}

std::span<const FilterFlag> FilterFlags() {
    return kFilterFlags;
}

}  // namespace brennvar
