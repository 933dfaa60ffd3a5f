// Asks the system for what can be picked in the editor of rules, on threads of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "advanced/RuleChoices.h"
#include "base/StopSignal.h"
#include "base/TaskThread.h"
#include "base/WhileAlive.h"
#include "views/ConnectionsReader.h"

namespace brennvar {

class WinRuleChoices final : public RuleChoices {
public:
    // The parts are borrowed. wake: as for TaskThread; RunCompletions is to be called soon.
    WinRuleChoices(const ConnectionsReader::Parts& parts, std::function<void()> wake);
    ~WinRuleChoices() override { Stop(); }

    void FindPrograms(Told told) override;
    void FindUsers(Told told) override;
    void LookUp(const std::string& host, std::function<void(std::vector<Ipv4>)> told) override;
    void StopLookUp() override;
    void Forget() override;

    void RunCompletions() {
        m_thread.RunCompletions();
        m_lookUpThread.RunCompletions();
    }
    // Nothing is asked any more. Takes no longer than a look at a signal, whatever the network does.
    void Stop();

private:
    const ConnectionsReader::Parts m_parts;
    std::optional<ConnectionsReader> m_programs;
    std::shared_ptr<StopSignal> m_lookUp;  // null: none is under way
    std::optional<WhileAlive> m_users;     // while somebody waits for them
    TaskThread m_thread;                   // for the users, who may take long
    TaskThread m_lookUpThread;             // for names, which do not wait for those
};

}  // namespace brennvar
