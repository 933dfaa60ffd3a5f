// One record of "Rules\rules_advanced.conf": a rule about addresses, ports and times. A flat sequence of these, no
// header, each enciphered on its own. Commands 4 and 5 carry one as it stands. Numbers are little-endian unless it
// is said otherwise; texts end in a zero.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"
#include "base/Ipv4.h"

namespace brennvar {

#pragma pack(push, 1)
// One end of a connection: this machine's, or the other one.
struct AdvancedRuleEnd {
    std::uint32_t kind;        //  0  0 any, 1 IPv4 address and mask, 2 hardware address
    Ipv4 address;              //  4  network byte order
    Ipv4 mask;                 //  8  network byte order
    std::uint16_t firstPort;   // 12  host order, as is the next; 0 and 0 are any
    std::uint16_t lastPort;    // 14
    std::uint8_t hardware[6];  // 16
    std::uint16_t zero;        // 22
};

struct AdvancedRuleRecord {
    std::uint32_t id;            //   0  given by the service, 0 in command 4
    std::uint32_t action;        //   4  0 deny, 1 allow
    std::uint32_t isEnabled;     //   8  0 or 1
    std::uint32_t protocol;      //  12  0 IP, 1 ICMP, 6 TCP, 17 UDP, 806 ARP, 0xFFFFFFFF any
    std::uint32_t route;         //  16  0 both, 1 incoming, 2 outgoing
    AdvancedRuleEnd local;       //  20
    AdvancedRuleEnd remote;      //  44
    std::uint32_t restrictions;  //  68  bit 0: hours, bit 1: dates
    std::uint16_t firstMinute;   //  72  of the day in local time, 0 to 1439
    std::uint16_t lastMinute;    //  74  below the first one: over midnight
    std::uint32_t firstDay;      //  76  year * 10000 + month * 100 + day
    std::uint32_t lastDay;       //  80
    std::uint32_t isLogged;      //  84  matches go to the traffic log, 0 or 1
    char program[260];           //  88  full path; empty: every program
    char user[104];              // 348  DOMAIN\name; empty: every user
    char description[256];       // 452
    std::uint32_t zero;          // 708
};
#pragma pack(pop)
static_assert(RecordType<AdvancedRuleRecord> && sizeof(AdvancedRuleRecord) == 712 && sizeof(AdvancedRuleEnd) == 24);
static_assert(offsetof(AdvancedRuleRecord, local) == 20 && offsetof(AdvancedRuleRecord, remote) == 44);
static_assert(offsetof(AdvancedRuleRecord, restrictions) == 68 && offsetof(AdvancedRuleRecord, firstDay) == 76);
static_assert(offsetof(AdvancedRuleRecord, program) == 88 && offsetof(AdvancedRuleRecord, user) == 348);
static_assert(offsetof(AdvancedRuleRecord, description) == 452 && offsetof(AdvancedRuleRecord, zero) == 708);
static_assert(offsetof(AdvancedRuleEnd, hardware) == 16 && offsetof(AdvancedRuleEnd, zero) == 22);

}  // namespace brennvar
