// The real sources of a question's facts.
#pragma once

#include <string>
#include <utility>

#include "base/Clock.h"
#include "ipc/Pipe.h"
#include "ipc/ServicePipes.h"
#include "logs/Lookups.h"
#include "prompts/FactSources.h"

namespace brennvar {

class WinProgramSources final : public ProgramSources {
public:
    WinProgramSources(std::string dataFolder, std::string installationFolder)
        : m_dataFolder(std::move(dataFolder)), m_installationFolder(std::move(installationFolder)) {}

    [[nodiscard]] std::optional<ProgramVersion> Version(const std::string& path) override;
    [[nodiscard]] std::shared_ptr<const QuestionIcon> Icon(const std::string& path) override;
    [[nodiscard]] QuestionWords LoadWords() override;

private:
    const std::string m_dataFolder;
    const std::string m_installationFolder;
};

class WinFactSources final : public FactSources {
public:
    // connector and waits are borrowed and belong to the thread that asks for paths and rules.
    // So is the signal, which ends a search for a name.
    WinFactSources(std::string dataFolder, std::string installationFolder, PipeConnector& connector, Clock& waits,
                   const StopSignal& stop);

    [[nodiscard]] std::optional<std::string> ResolveProcessPath(std::uint32_t processId) override;
    [[nodiscard]] RuleAction LookupAction(const std::string& path) override;
    [[nodiscard]] std::optional<ProgramVersion> Version(const std::string& path) override {
        return m_programs.Version(path);
    }
    [[nodiscard]] std::shared_ptr<const QuestionIcon> Icon(const std::string& path) override {
        return m_programs.Icon(path);
    }
    [[nodiscard]] QuestionWords LoadWords() override { return m_programs.LoadWords(); }
    [[nodiscard]] Ipv4 LocalAddressFor(Ipv4 address) override;
    [[nodiscard]] std::string HostName(LocalDate day, Ipv4 address) override;
    [[nodiscard]] std::optional<std::uint32_t> Advice(const std::string& path) override;

private:
    const std::string m_dataFolder;
    LogLookups m_lookups;
    WinProgramSources m_programs;
    Clock& m_waits;
    ServicePipes m_pipes;
};

}  // namespace brennvar
