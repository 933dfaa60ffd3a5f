#include "app/PageList.h"

#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

constexpr PageInfo kPages[] = {
    {IDM_STATISTICS, 45, "Statistics", 1010, "Network traffic of this computer."},
    {IDM_CONNECTIONS, 46, "Connections", 1011,
     "Connections and listening ports of this computer, with their programs."},
    {IDM_ADVANCED, 47, "Advanced", 1012, "Rules by address, port and time."},
    {IDM_OPTIONS, 48, "Options", 1013, "Settings of the firewall."},
    {IDM_APPLICATIONS, 49, "Applications", 1014, "Programs and what they may do on the network."},
    {IDM_TRAFFIC_LOG, 50, "Traffic Log", 1015, "Recorded network traffic and security events."},
};

}  // namespace

std::span<const PageInfo> PageList() {
    return kPages;
}

}  // namespace brennvar
