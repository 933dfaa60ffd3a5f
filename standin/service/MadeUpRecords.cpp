// Records that a scenario asks for by their number only.
#include <string>

#include "base/Ipv4.h"
#include "service/Scenario.h"

namespace brennvar::standin {

ConnectionEntry MadeUpConnection(std::uint32_t index) {
    constexpr std::uint32_t kEstablishedOut = 4;
    constexpr std::uint32_t kFirstLocalPort = 1024;
    ConnectionEntry entry{};
    entry.state = kEstablishedOut;
    entry.localAddress = 0x0100A8C0;  // 192.168.0.1
    entry.localPort = SwapPort(static_cast<std::uint16_t>(kFirstLocalPort + index % (0x10000 - kFirstLocalPort)));
    entry.remoteAddress = SwapAddress(0x0A000000 + index);
    entry.remotePort = SwapPort(443);
    entry.processId = 1000 + index % 50;
    entry.bytesIn = index;
    entry.bytesOut = 2 * index;
    return entry;
}

ListenerEntry MadeUpListener(std::uint32_t index) {
    constexpr std::uint32_t kPorts = 0x10000;
    ListenerEntry entry{};
    entry.protocol = kProtocolTcp;
    entry.localAddress = SwapAddress(0xC0A80001 + index / kPorts);
    entry.localPort = SwapPort(static_cast<std::uint16_t>(index % kPorts));
    entry.processId = MadeUpConnection(index).processId;
    return entry;
}

TrafficLogRecord MadeUpEvent(std::uint32_t index) {
    TrafficLogRecord record{};
    record.action = 1 + index % 6;
    record.protocol = index % 3 == 0 ? kProtocolUdp : kProtocolTcp;
    record.outgoing = index % 2;
    record.localAddress = 0x0500000A;  // 10.0.0.5
    record.localPort = 1024 + index % 0x8000;
    record.remoteAddress = SwapAddress(0x5D000000 + index);
    record.remotePort = index % 3 == 0 ? 53 : 443;
    record.kind = 1;
    PutText(record.shortText, "Rule " + std::to_string(index % 10));
    PutText(record.path, R"(C:\Program Files\Made up\program)" + std::to_string(index % 20) + ".exe");
    return record;
}

AdvancedRuleRecord MadeUpRule(std::uint32_t index) {
    AdvancedRuleRecord rule{};
    rule.action = index % 3 == 2 ? 1 : 0;
    rule.isEnabled = index % 10 == 9 ? 0 : 1;
    rule.protocol = kProtocolTcp;
    rule.route = 2;        // outgoing
    rule.remote.kind = 1;  // address and mask
    rule.remote.address = SwapAddress(0xC6120000 + index);
    rule.remote.mask = 0xFFFFFFFF;
    rule.remote.firstPort = 1024;
    rule.remote.lastPort = 1030;
    PutText(rule.description, "Rule " + std::to_string(index));
    return rule;
}

std::string MadeUpTrusted(std::uint32_t index) {
    return R"(C:\Program Files\Made up\trusted )" + std::to_string(index) + ".exe";
}

std::string MadeUpSite(std::uint32_t index) {
    return "site" + std::to_string(index) + ".example";
}

}  // namespace brennvar::standin
