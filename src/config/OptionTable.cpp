#include "config/OptionTable.h"

#include <algorithm>
#include <iterator>

namespace brennvar {
namespace {

using enum OptionKind;
using enum OptionGroup;

// By default the machine may ping out and receive the answers and error reports, and nothing else of ICMP.
constexpr OptionInfo kOptions[] = {
    {OptionId{1}, Number, 0, None, 0, Text{}},
    {OptionId{2}, Flag, 0, FileSharing, 0, Text{371, "Disable sharing of my files and printers"}},
    {OptionId{3}, Flag, 0, FileSharing, 0, Text{372, "Disable Network Neighborhood browsing"}},
    {OptionId{4}, Secret, 0, None, 0, Text{}},
    {OptionId{5}, Flag, 1, General, 0, Text{373, "Show security notification messages in the system tray"}},
    {OptionId{6}, Flag, 0, General, 0, Text{504, "Show blocked applications messages in the system tray"}},
    {OptionId{7}, Flag, 1, General, 0, Text{374, "Automatically load firewall at Windows startup"}},
    {OptionId{8}, Flag, 1, Enhancements, 0, Text{376, "Enable Intrusion Prevention System"}},
    {OptionId{9}, Flag, 1, Enhancements, 0, Text{377, "Enable NetBIOS Protection"}},
    {OptionId{11}, Flag, 1, Enhancements, 0, Text{379, "Block Universal Plug and Play traffic"}},
    {OptionId{12}, Flag, 1, Enhancements, 0, Text{380, "Enable OS fingerprint masquerading"}},
    {OptionId{13}, Flag, 1, Enhancements, 0, Text{381, "Enable fingerprint authentication"}},
    {OptionId{14}, Flag, 1, Enhancements, 0, Text{382, "Enable anti-MAC spoofing"}},
    {OptionId{15}, Flag, 1, Enhancements, 0, Text{383, "Enable anti-DNS spoofing"}},
    {OptionId{16}, Flag, 0, Enhancements, 0, Text{384, "Enable anti-IP spoofing"}},
    {OptionId{17}, Flag, 1, Enhancements, 0, Text{385, "Automatically block attacker for:"}},
    {OptionId{18}, NumberOfFlag, 600, Enhancements, 0, Text{346, "second(s)"}},
    {OptionId{19}, Flag, 0, Enhancements, 1, Text{558, "Block fragmented packets"}},
    {OptionId{20}, Flag, 1, Enhancements, 1, Text{386, "Enable portscan detection"}},
    {OptionId{21}, Flag, 1, Enhancements, 1, Text{387, "Enable DoS detection"}},
    {OptionId{22}, Flag, 1, Enhancements, 1, Text{388, "Enable local network traffic"}},
    {OptionId{23}, Flag, 1, Enhancements, 1, Text{389, "Enable time synchronisation"}},
    {OptionId{24}, Flag, 1, Enhancements, 1, Text{390, "Enable DHCP"}},
    {OptionId{25}, Flag, 1, Enhancements, 1, Text{391, "Enable DNS"}},
    {OptionId{26}, Flag, 1, Enhancements, 1, Text{579, "Enable Process Defense System"}},
    {OptionId{27}, Flag, 1, Logging, 0, Text{393, "Enable Security Log"}},
    {OptionId{28}, Flag, 1, Logging, 0, Text{394, "Enable System Log"}},
    {OptionId{29}, Flag, 1, Logging, 0, Text{395, "Enable Traffic Log"}},
    {OptionId{30}, Flag, 0, Logging, 0, Text{396, "Enable Packet Log"}},
    {OptionId{31}, Number, 4096, Logging, 0, Text{348, "Maximum traffic log size (KB):"}},
    {OptionId{32}, Number, 10240, Logging, 0, Text{349, "Maximum packet log size (KB):"}},
    {OptionId{33}, Number, 30, Logging, 0, Text{350, "Delete old log files after (days):"}},
    {OptionId{34}, Flag, 0, Logging, 1, Text{400, "Enable Notification"}},
    {OptionId{35}, Line, 0, Logging, 1, Text{352, "From:"}},
    {OptionId{36}, Line, 0, Logging, 1, Text{353, "To:"}},
    {OptionId{37}, Line, 0, Logging, 1, Text{354, "Cc:"}},
    {OptionId{38}, Line, 0, Logging, 1, Text{355, "Subject:"}},
    {OptionId{39}, Line, 0, Logging, 1, Text{356, "Server:"}},
    {OptionId{40}, Line, 0, Logging, 1, Text{357, "Login:"}},
    {OptionId{41}, Secret, 0, Logging, 1, Text{358, "Password:"}},
    {OptionId{42}, Flag, 1, Icmp, 0, Text{1100, "(0) Echo Reply"}},
    {OptionId{43}, Flag, 1, Icmp, 0, Text{1101, "(3) Dest. Unreachable"}},
    {OptionId{44}, Flag, 0, Icmp, 0, Text{1102, "(4) Source Quench"}},
    {OptionId{45}, Flag, 0, Icmp, 0, Text{1103, "(5) Redirect"}},
    {OptionId{46}, Flag, 0, Icmp, 0, Text{1104, "(8) Echo"}},
    {OptionId{47}, Flag, 1, Icmp, 0, Text{1105, "(11) Time Exceeded"}},
    {OptionId{48}, Flag, 0, Icmp, 0, Text{1106, "(12) Param. Problem"}},
    {OptionId{49}, Flag, 0, Icmp, 0, Text{1107, "(13) Timestamp"}},
    {OptionId{50}, Flag, 0, Icmp, 0, Text{1108, "(14) Timestamp Reply"}},
    {OptionId{51}, Flag, 0, Icmp, 0, Text{1109, "(17) Address Mask Rq."}},
    {OptionId{52}, Flag, 0, Icmp, 0, Text{1110, "(18) Address Mask Rp."}},
    {OptionId{53}, Flag, 0, Icmp, 1, Text{1100, "(0) Echo Reply"}},
    {OptionId{54}, Flag, 0, Icmp, 1, Text{1101, "(3) Dest. Unreachable"}},
    {OptionId{55}, Flag, 0, Icmp, 1, Text{1102, "(4) Source Quench"}},
    {OptionId{56}, Flag, 0, Icmp, 1, Text{1103, "(5) Redirect"}},
    {OptionId{57}, Flag, 1, Icmp, 1, Text{1104, "(8) Echo"}},
    {OptionId{58}, Flag, 0, Icmp, 1, Text{1105, "(11) Time Exceeded"}},
    {OptionId{59}, Flag, 0, Icmp, 1, Text{1106, "(12) Param. Problem"}},
    {OptionId{60}, Flag, 0, Icmp, 1, Text{1107, "(13) Timestamp"}},
    {OptionId{61}, Flag, 0, Icmp, 1, Text{1108, "(14) Timestamp Reply"}},
    {OptionId{62}, Flag, 0, Icmp, 1, Text{1109, "(17) Address Mask Rq."}},
    {OptionId{63}, Flag, 0, Icmp, 1, Text{1110, "(18) Address Mask Rp."}},
    {OptionId{64}, Flag, 1, Miscellaneous, 0, Text{402, "Notify me about newer version"}},
    {OptionId{65}, Flag, 1, Miscellaneous, 0, Text{403, "Automatically update signatures"}},
    {OptionId{66}, Line, 0, Miscellaneous, 1, Text{1111, "Host:"}},
    {OptionId{67}, Port, 0, Miscellaneous, 1, Text{1112, "Port:"}},
    {OptionId{68}, Line, 0, Miscellaneous, 1, Text{357, "Login:"}},
    {OptionId{69}, Secret, 0, Miscellaneous, 1, Text{358, "Password:"}},
    {OptionId{70}, List, 0, Miscellaneous, 1, Text{1113, "Proxy Type:"}},
    {OptionId{78}, Flag, 1, Enhancements, 1, Text{581, "Enable AppInit DLL Protection"}},
    {OptionId{79}, Port, 8215, BrowserFiltering, 0, Text{602, "Filtering proxy server port:"}},
};
static_assert(std::is_sorted(std::begin(kOptions), std::end(kOptions),
                             [](const OptionInfo& a, const OptionInfo& b) { return a.id < b.id; }));

}  // namespace

std::span<const OptionInfo> OptionTable() {
    return kOptions;
}

const OptionInfo* FindOption(std::uint32_t id) {
    const auto* const at =
        std::lower_bound(std::begin(kOptions), std::end(kOptions), static_cast<OptionId>(id),
                         [](const OptionInfo& info, OptionId wanted) { return info.id < wanted; });
    return at != std::end(kOptions) && at->id == static_cast<OptionId>(id) ? at : nullptr;
}

}  // namespace brennvar
