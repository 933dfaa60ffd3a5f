// The control center's commands to the service, each with the report that goes with it, so that the service records
// what the user did. They run on the link thread; like every command they fail silently when the service is absent.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "base/Ipv4.h"
#include "config/Language.h"
#include "ipc/CommandPipe.h"

namespace brennvar {

void ResetTrusted(CommandPipe& pipe, const Language& language);
// Followed by the command that switches the network: it stays as it is.
void ResetFingerprints(CommandPipe& pipe, const Language& language, bool isNetworkOn);
// Sets everything back.
void ResetFirewall(CommandPipe& pipe, const Language& language);
void SendTestMail(CommandPipe& pipe, const Language& language);
void TerminateProcess(CommandPipe& pipe, const Language& language, std::uint32_t processId, std::string_view path);
// seconds: how long the address stays blocked, option 18.
void BlockAddress(CommandPipe& pipe, const Language& language, Ipv4 address, std::uint32_t seconds);
// "IP: 10.1.2.3. Blocking IP address for 600 seconds"
[[nodiscard]] std::string BlockingText(const Language& language, Ipv4 address, std::uint32_t seconds);

// Without a report:
void UpdateSignatures(CommandPipe& pipe);
void EnableNetwork(CommandPipe& pipe, bool isEnabled);
// The logs of this day and, as wanted, of those before it.
void DeleteLogs(CommandPipe& pipe, const LocalDate& day, bool olderToo);

}  // namespace brennvar
