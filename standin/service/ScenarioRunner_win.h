// Carries a scenario out, instruction by instruction.
#pragma once

#include "service/ActivityCaller_win.h"
#include "service/DataFolder_win.h"
#include "service/DriverFeeder_win.h"
#include "service/Journal_win.h"
#include "service/Scenario.h"
#include "service/Service_win.h"
#include "service/StartedProcesses_win.h"
#include "service/Stop_win.h"

namespace brennvar::standin {

class ScenarioRunner {
public:
    ScenarioRunner(const Stop& stop, Journal& journal, Progress& progress, DataFolder& data, DriverFeeder& feeder,
                   StartedProcesses& processes, Service& service, ActivityCaller& caller)
        : m_stop(stop),
          m_journal(journal),
          m_progress(progress),
          m_data(data),
          m_feeder(feeder),
          m_processes(processes),
          m_service(service),
          m_caller(caller) {}

    // Returns when the last instruction is done or the stop is requested.
    void Run(const Scenario& scenario);

private:
    void Do(const WaitInstruction& wait);
    void Do(const WaitForRecordsInstruction& wait);
    void Do(const QuestionInstruction& question);
    void Do(const NoticeInstruction& notice);
    void Do(const ProcessInstruction& process);
    void Do(const StartProcessInstruction& process);
    void Do(const ConnectionInstruction& connection);
    void Do(const ConnectionsInstruction& connections);
    void Do(const ListenersInstruction& listeners);
    void Do(const ListenerInstruction& listener);
    void Do(const ClearTablesInstruction& clear);
    void Do(const TotalsInstruction& totals);
    void Do(const RateInstruction& rate);
    void Do(const DnsInstruction& dns);
    void Do(const MacInstruction& mac);
    void Do(const AdviceInstruction& advice);
    void Do(const LogInstruction& log);
    void Do(const LogManyInstruction& many);
    void Do(const PacketInstruction& packet);
    void Do(const LogDayInstruction& day);
    void Do(const RuleInstruction& rule);
    void Do(const AdvancedRuleInstruction& rule);
    void Do(const TrustedInstruction& trusted);
    void Do(const SiteInstruction& site);
    void Do(const FillInstruction& fill);
    void Do(const SpoilInstruction& spoil);
    void Do(const RefuseInstruction& refuse);
    void Do(const OptionInstruction& option);
    void Do(const OptionTextInstruction& option);
    void Do(const HostileInstruction& hostile);
    void Do(const ActivityInstruction& activity);
    void Do(const ExitInstruction& exit);

    // The service takes its rules anew, as if it had changed them itself.
    void UseRules();

    const Stop& m_stop;
    Journal& m_journal;
    Progress& m_progress;
    DataFolder& m_data;
    DriverFeeder& m_feeder;
    StartedProcesses& m_processes;
    Service& m_service;
    ActivityCaller& m_caller;
};

}  // namespace brennvar::standin
