// Advanced rules in plain words, in the language of the user. Made here only: the list, its tips, the editor, the
// preview of an import and "Why?" say the same of the same rule.
#pragma once

#include <string>

#include "config/Language.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

// "Deny outgoing TCP to 192.0.2.0/24, port 80-88, for browser.exe, from 8:00 to 17:00". The description is not part
// of it. Of a rule for protocols without ports as well its ports limit TCP and UDP only, and it says so: "Deny all
// traffic, of TCP and UDP only remote port 53". A damaged rule says that it is damaged and never matches, one that
// is off that it is off.
[[nodiscard]] std::string RuleSentence(const Language& language, const AdvancedRule& rule);

// The columns of the list.
[[nodiscard]] std::string ActionText(const Language& language, AdvancedAction action);    // "Deny"
[[nodiscard]] std::string ProtocolText(const Language& language, RuleProtocol protocol);  // "TCP", "Any protocol"
[[nodiscard]] std::string WhatText(const Language& language, const AdvancedRule& rule);   // "TCP out"
// "any", "192.0.2.1", "192.0.2.0/24, port 80-88", "02:00:00:AB:CD:EF"; a port is left out where none counts.
[[nodiscard]] std::string EndText(const Language& language, const RuleEnd& end, RuleProtocol protocol);
[[nodiscard]] std::string ProgramText(const Language& language, const AdvancedRule& rule);  // "browser.exe", "any"
// "8:00-17:00, 2026-12-01 to 2026-12-24", "always".
[[nodiscard]] std::string WhenText(const Language& language, const AdvancedRule& rule);

// The same in every language.
[[nodiscard]] std::string HardwareText(const HardwareAddress& address);  // "02:00:00:AB:CD:EF"
[[nodiscard]] std::string PortsText(const RuleEnd& end);                 // "80", "80-88"; empty: any
[[nodiscard]] std::string TimeText(int minute);                          // of the day, "8:05"
[[nodiscard]] std::string DateText(const LocalDate& day);                // "2026-12-01"

}  // namespace brennvar
