#include "app/PageList.h"

#include "config/ResourceIds.h"

namespace brennvar {
namespace {

constexpr PageInfo kPages[] = {
    {IDM_STATISTICS, Text{45, "Statistics"}, Text{1010, "Network traffic of this computer."}},
    {IDM_CONNECTIONS, Text{46, "Connections"},
     Text{1011, "Connections and listening ports of this computer, with their programs."}},
    {IDM_ADVANCED, Text{47, "Advanced"}, Text{1012, "Rules by address, port and time."}},
    {IDM_OPTIONS, Text{48, "Options"}, Text{1013, "What the firewall protects, records and shows."}},
    {IDM_APPLICATIONS, Text{49, "Applications"}, Text{1014, "Programs and what they may do on the network."}},
    {IDM_TRAFFIC_LOG, Text{50, "Traffic Log"}, Text{1015, "Recorded network traffic and security events."}},
};

}  // namespace

std::span<const PageInfo> PageList() {
    return kPages;
}

}  // namespace brennvar
