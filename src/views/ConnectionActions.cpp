#include "views/ConnectionActions.h"

#include <array>
#include <utility>

#include "base/DisplayName.h"
#include "commands/Batch.h"
#include "config/ResourceIds.h"
#include "ipc/DriverRecords.h"
#include "views/AddressActions.h"

namespace brennvar {
namespace {

constexpr std::array<ListAction, 10> kActions = {
    {{IDC_CONNECTIONS_DETAILS, Text{1362, "D&etails"}, ActionPlace::ButtonAndMenu, ActionRows::Focused,
      ListKey::Enter},
     {IDC_CONNECTIONS_BLOCK, Text{1670, "&Block temporarily"}, ActionPlace::ButtonAndMenu, ActionRows::Focused},
     {IDC_CONNECTIONS_TERMINATE, Text{1671, "&Terminate program..."}, ActionPlace::ButtonAndMenu,
      ActionRows::Focused},
     kTraceRouteButton,
     kWhoIsButton,
     kLocateAction,
     {IDC_CONNECTIONS_FOLDER, Text{1673, "Open &folder of the program"}, ActionPlace::Menu, ActionRows::Focused},
     {IDC_CONNECTIONS_RULE, Text{1674, "Show its &rule"}, ActionPlace::Menu, ActionRows::Focused},
     kMakeRuleAction,
     kWhyAction}};

// What stands for no program that anybody could end: no process at all, and the system itself.
constexpr std::uint32_t kSystemProcess = 4;
bool IsEndable(std::uint32_t processId) {
    return processId != 0 && processId != kSystemProcess && processId != kNoProcess;
}

TrafficFacts FactsOf(const ConnectionTarget& target) {
    const ConnectionRow& row = target.row;
    TrafficFacts facts{.program = target.program.path,
                       .protocol = kProtocolTcp,
                       .direction = row.IsOutgoing() ? TrafficDirection::Outgoing : TrafficDirection::Incoming,
                       .localAddress = row.localAddress,
                       .remoteAddress = row.remoteAddress,
                       .localPort = row.localPort,
                       .remotePort = row.remotePort};
    if (row.state == kStateListenUdp) facts.protocol = kProtocolUdp;
    if (row.state == kStateListenIp) facts.protocol = 0;  // of any number
    if (row.state == kStateListenOther) facts.protocol.reset();
    return facts;
}

}  // namespace

std::span<const ListAction> ConnectionActions::All() {
    return kActions;
}

bool ConnectionActions::CanDo(int action, const ConnectionTarget& target) {
    switch (action) {
        case IDC_CONNECTIONS_DETAILS:
        case IDC_MAKE_RULE:
        case IDC_WHY: return true;
        case IDC_CONNECTIONS_BLOCK: return target.row.IsEstablished();
        case IDC_CONNECTIONS_TERMINATE:
            // Whose identifier it is when its last connection has gone, nobody knows.
            return IsEndable(target.row.processId) && target.row.mark != RowMark::Gone;
        case IDC_CONNECTIONS_FOLDER:
        case IDC_CONNECTIONS_RULE: return !target.program.path.empty();
        default: return CanDoAddressAction(action, target.row.remoteAddress);
    }
}

void ConnectionActions::Do(int action, const ConnectionTarget& target, ListView& view) {
    if (!CanDo(action, target) || DoRuleAction(action, FactsOf(target), view)) return;
    switch (action) {
        case IDC_CONNECTIONS_DETAILS: ShowDetails(target, view); break;
        case IDC_CONNECTIONS_BLOCK: Block(target.row.remoteAddress, view); break;
        case IDC_CONNECTIONS_TERMINATE: Terminate(target, view); break;
        case IDC_CONNECTIONS_FOLDER: view.OpenFolderOf(target.program.path); break;
        case IDC_CONNECTIONS_RULE: view.OpenPage(IDM_APPLICATIONS, target.program.path); break;
        default: DoAddressAction(action, target.row.remoteAddress, view); break;
    }
}

void ConnectionActions::ShowDetails(const ConnectionTarget& target, ListView& view) {
    const std::uint64_t sheet = ++m_sheets;
    m_parts.reads.Ask<LogNames>(
        [&lookups = m_parts.lookups, day = m_parts.clock.Today(), row = target.row] {
            return LookUpNames(lookups, day, row.localAddress, row.remoteAddress);
        },
        m_alive.Guard([this, sheet, target, &view](const std::optional<LogNames>& names) {
            if (sheet != m_sheets) return;
            const LogNames found = names.value_or(LogNames{});
            view.UpdateSheet(ConnectionDetails(m_parts.language, target, &found));
        }));
    // Last: it pumps messages until the user has read it, and the page may be gone then.
    view.ShowSheet(ConnectionDetails(m_parts.language, target, nullptr));
}

void ConnectionActions::Block(Ipv4 address, ListView& view) {
    m_parts.commander.AskFor(UserCommand::BlockAddress, m_alive.Guard([this, address, &view] {
        // The service may hold the file.
        m_parts.reads.Ask<std::uint32_t>(
            [&options = m_parts.options] {
                return options.Read().value_or(StoredOptions{}).values.Number(OptionId::BlockSeconds);
            },
            m_alive.Guard([this, address, &view](std::optional<std::uint32_t> seconds) {
                SendBlock(address, seconds.value_or(OptionValues().Number(OptionId::BlockSeconds)), view);
            }));
    }));
}

void ConnectionActions::SendBlock(Ipv4 address, std::uint32_t seconds, ListView& view) {
    m_parts.commander.Send(BlockAddressBatch(m_parts.language, address, seconds),
                           m_alive.Guard([this, address, seconds, &view](bool wasThere) {
                               if (!wasThere) return TellLost(view);
                               m_parts.blocked.Add(address, m_parts.clock.UtcNow(), seconds);
                               view.Tell(m_parts.language.GetText(553, "Blocked connection"),
                                         BlockedText(m_parts.language, address, seconds));
                           }));
}

ListQuestion ConnectionActions::TerminateQuestion(const ConnectionTarget& target) const {
    const Language& language = m_parts.language;
    std::string text = target.program.name;
    if (!target.program.path.empty()) text.append("\n").append(OneLine(target.program.path));
    text.append("\n").append(language.GetText(1687, "Process ID:")).append(" ");
    AppendNumber(text, target.row.processId);
    text.append("\n\n").append(
        language.GetText(1676,
                         "Do you want to terminate this program? What it has not saved is lost, and all its "
                         "connections end."));
    return {.text = std::move(text), .yes = language.GetText(1677, "Terminate")};
}

void ConnectionActions::Terminate(const ConnectionTarget& target, ListView& view) {
    const auto send = [this, processId = target.row.processId, path = target.program.path,
                       name = target.program.name, &view] {
        // The password takes its time: the identifier may belong to nobody by now, or to another program, which
        // nobody has asked about.
        if (m_pathOfProcess(processId) != path) {
            view.Tell(m_parts.language.GetText(554, "Process termination"),
                      m_parts.language.GetText(1689,
                                               "The program has ended, or its process is another one now. Nothing "
                                               "was terminated."));
            return;
        }
        m_parts.commander.Send(
            Batch(UserCommand::TerminateProcess, {.processId = processId, .subject = path.empty() ? name : path}),
            m_alive.Guard([this, &view](bool wasThere) {
                if (!wasThere) TellLost(view);
            }));
    };
    m_parts.commander.AskFor(UserCommand::TerminateProcess, m_alive.Guard(send));
}

void ConnectionActions::TellLost(ListView& view) const {
    view.Tell(m_parts.language.GetText(46, "Connections"),
              m_parts.language.GetText(1675, "The firewall service is not reachable. Nothing was changed."));
}

}  // namespace brennvar
