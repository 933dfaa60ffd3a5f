// The real surroundings of a connection question.
#pragma once

#include <functional>
#include <string>

#include "base/Clock.h"
#include "ipc/Pipe.h"
#include "ipc/ServicePipes.h"
#include "ipc/WatchedConnector.h"
#include "prompts/PromptWorld.h"

namespace brennvar {

class WinPromptWorld final : public PromptWorld {
public:
    // Shows the question modally; see PromptWorld::Ask.
    using Asker = std::function<PromptAnswer(const PromptQuestion& question)>;

    // Whether the service is known to be there, from whoever calls it all the time.
    using ServiceState = std::function<PeerState()>;

    // connector and clock are borrowed and must outlive the object. They belong to the user-interface thread: the
    // service's pipes are called on from it, with their waits.
    WinPromptWorld(std::string dataFolder, std::string installationFolder, PipeConnector& connector, Clock& clock,
                   Asker ask, ServiceState service = {});

    [[nodiscard]] RuleAction LookupAction(const std::string& path) override;
    [[nodiscard]] std::optional<std::uint32_t> Advice(const std::string& path) override;
    [[nodiscard]] std::optional<std::string> ResolveProcessPath(std::uint32_t processId) override;
    [[nodiscard]] std::string HostName(Ipv4 address) override;
    [[nodiscard]] std::string FileDescription(const std::string& path) override;
    [[nodiscard]] Ipv4 LocalAddressFor(Ipv4 address) override;
    [[nodiscard]] Language LoadLanguage() override;
    // Not while this thread shows a menu, which is closed, or moves a window.
    [[nodiscard]] bool IsReadyToAsk() override;
    [[nodiscard]] PromptAnswer Ask(const PromptQuestion& question) override;
    void SendAnswer(const ConnectionPromptAnswer& answer) override;

private:
    std::string m_dataFolder;
    std::string m_installationFolder;
    PipeConnector& m_connector;
    Clock& m_clock;
    ServicePipes m_pipes;
    Asker m_ask;
    ServiceState m_service;
};

}  // namespace brennvar
