// What the user does with a connection: look at it, block its other side for a while, end its program, ask where it
// goes. Everything that may wait does so elsewhere. User-interface thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "base/Clock.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/BlockedAddresses.h"
#include "commands/Commander.h"
#include "config/Language.h"
#include "config/OptionSource.h"
#include "lists/ListModel.h"
#include "logs/Lookups.h"
#include "views/ConnectionSheet.h"

namespace brennvar {

class ConnectionActions {
public:
    // All are borrowed; options and lookups are used on the queue.
    struct Parts {
        const Language& language;
        Commander& commander;
        TaskQueue& reads;
        const OptionSource& options;
        const Clock& clock;
        LogLookups& lookups;
        BlockedAddresses& blocked;  // gets what is blocked here
    };
    // The path of a process as it is known now; nothing when it has no connections.
    using PathOfProcess = std::function<std::optional<std::string>(std::uint32_t processId)>;

    ConnectionActions(const Parts& parts, PathOfProcess pathOfProcess)
        : m_parts(parts), m_pathOfProcess(std::move(pathOfProcess)) {}

    [[nodiscard]] static std::span<const ListAction> All();
    [[nodiscard]] static bool CanDo(int action, const ConnectionTarget& target);
    [[nodiscard]] ListQuestion TerminateQuestion(const ConnectionTarget& target) const;
    void Do(int action, const ConnectionTarget& target, ListView& view);

private:
    void ShowDetails(const ConnectionTarget& target, ListView& view);
    void Block(Ipv4 address, ListView& view);
    void SendBlock(Ipv4 address, std::uint32_t seconds, ListView& view);
    void Terminate(const ConnectionTarget& target, ListView& view);
    void TellLost(ListView& view) const;

    const Parts m_parts;
    const PathOfProcess m_pathOfProcess;
    std::uint64_t m_sheets = 0;  // shown so far: what was looked up for an earlier one comes too late
    const WhileAlive m_alive;
};

}  // namespace brennvar
