#include "advanced/RuleChoices_win.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/AskAside.h"
#include "base/Users_win.h"
#include "tools/NameLookup_win.h"

namespace brennvar {
namespace {

// The system's own look-up asks three servers in turn; whoever is in a hurry can stop it.
constexpr std::chrono::seconds kLookUpLimit{30};
// A domain that does not answer; meanwhile users can be typed.
constexpr std::chrono::seconds kUsersLimit{10};

std::vector<std::string> PathsIn(const ConnectionsReader::Snapshot& snapshot) {
    std::vector<std::string> paths;
    if (!snapshot) return paths;
    for (const ConnectionProgram& program : snapshot->table->Programs()) {
        // Without a folder it is a name that the system gives to itself.
        if (program.path.find('\\') != std::string::npos) paths.push_back(program.path);
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

}  // namespace

WinRuleChoices::WinRuleChoices(const ConnectionsReader::Parts& parts, std::function<void()> wake)
    : m_parts(parts), m_thread(wake), m_lookUpThread(std::move(wake)) {}

void WinRuleChoices::FindPrograms(Told told) {
    m_programs.emplace(m_parts, "", [this, told = std::move(told)](const ConnectionsReader::Snapshot& snapshot) {
        if (snapshot) m_programs->Close();  // one reading is enough; names of its programs still come
        told(PathsIn(snapshot));
    });
    m_programs->Open();
}

void WinRuleChoices::FindUsers(Told told) {
    using Users = std::vector<std::string>;
    m_users.emplace();
    m_thread.Ask<Users>([this] { return AskAside(&ListUsers, kUsersLimit, m_thread.Stopping()).value_or(Users()); },
                        m_users->Guard([told = std::move(told)](std::optional<Users> users) {
                            told(std::move(users).value_or(Users()));
                        }));
}

void WinRuleChoices::LookUp(const std::string& host, std::function<void(std::vector<Ipv4>)> told) {
    using Addresses = std::vector<Ipv4>;
    StopLookUp();
    m_lookUp = std::make_shared<StopSignal>();
    m_lookUpThread.Ask<Addresses>(
        [host, stop = m_lookUp] {
            Addresses addresses;
            (void)LookUpAddresses(host, *stop, kLookUpLimit, addresses);  // why is not said: a name can be mistyped
            return addresses;
        },
        [told = std::move(told), stop = m_lookUp](std::optional<Addresses> addresses) {
            if (!stop->Requested()) told(std::move(addresses).value_or(Addresses()));
        });
}

void WinRuleChoices::StopLookUp() {
    if (m_lookUp) m_lookUp->Request();
    m_lookUp.reset();
}

void WinRuleChoices::Forget() {
    StopLookUp();
    m_users.reset();
    m_programs.reset();
}

void WinRuleChoices::Stop() {
    StopLookUp();
    m_lookUpThread.RequestStop(std::chrono::milliseconds(0));
    m_thread.RequestStop(std::chrono::milliseconds(0));
}

}  // namespace brennvar
