// The one place from which anything is said to the service. What a command consists of, and whether it is
// protected, stands in the table (commands/CommandTable.h). Nothing here waits. User-interface thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/StopSignal.h"
#include "commands/AskPassword.h"
#include "commands/Batch.h"
#include "config/Language.h"
#include "ipc/ServiceLink.h"

namespace brennvar {

// What the service needs to rewrite its files after a command; whoever reads them again waits for it.
inline constexpr std::chrono::milliseconds kWritingPause{200};

// Told when a batch has been delivered or given up: whether the service was there for the last of it. Not told when
// the program ends before.
using Sent = std::function<void(bool wasThere)>;

// What becomes of a protected command. Each may be empty.
struct CommandOutcome {
    std::function<void()> allowed{};  // the batch is sent behind it
    std::function<void()> refused{};  // nothing is sent
    Sent sent{};
    // Requested before the batch has gone: it is not sent any more; null: it stays.
    std::shared_ptr<const StopSignal> withdrawn{};
};

class Commander {
public:
    // Both are borrowed for the life of the program.
    Commander(ServiceLink& link, const Language& language) : m_link(link), m_language(language) {}
    Commander(const Commander&) = delete;
    Commander& operator=(const Commander&) = delete;

    // Who asks for the password, borrowed likewise. It reports through the commander, which is made before it;
    // until it is here, what is protected is refused.
    void GuardWith(AskPassword& gate) { m_gate = &gate; }

    // Sends it as it is: the command is free, or the caller has asked. withdrawn: as in ServiceLink::Send.
    void Send(Batch batch, Sent done = {}, std::shared_ptr<const StopSignal> withdrawn = nullptr);

    // Asks for the password where the table says so, then sends it.
    void SendProtected(Batch batch, CommandOutcome outcome = {});
    // The same for a command that is put together only when it is allowed.
    void AskFor(UserCommand command, std::function<void()> allowed, std::function<void()> refused = {});

    // The port of the filtering proxy, which goes to the web-filter queue.
    void SetFilterPort(std::uint32_t port, Sent done, std::shared_ptr<const StopSignal> withdrawn = nullptr);
    // The list of filtered sites, by way of the same queue. One entry after the other is removed, until
    // one of them is in vain.
    void AddSite(std::string name, Sent done, std::shared_ptr<const StopSignal> withdrawn = nullptr);
    void RemoveSites(std::vector<std::uint32_t> ids, Sent done,
                     std::shared_ptr<const StopSignal> withdrawn = nullptr);

private:
    ServiceLink& m_link;
    const Language& m_language;
    AskPassword* m_gate = nullptr;
};

}  // namespace brennvar
