#include "prompts/ConnectionPrompt_win.h"

#include <chrono>

#include "config/Folders_win.h"
#include "prompts/ConfirmationDialog_win.h"

namespace brennvar {
namespace {

// As long as the last commands get.
constexpr std::chrono::seconds kAnswerPatience{3};

}  // namespace

ConnectionPrompt::ConnectionPrompt(DeviceOpener& devices, const Clock& clock, const std::function<void()>& wake)
    : m_deciding(wake),
      m_programs(wake),
      m_connection(wake),
      m_delivering(wake),
      m_sources(GetDataFolder(), GetInstallationFolder(), m_decidingPipes, m_decidingWaits,
                m_connection.Stopping()),
      m_facts(m_sources, {.deciding = m_deciding, .programs = m_programs, .connection = m_connection}, clock),
      m_questions(devices, m_facts, m_delivery, *this) {}

ConnectionPrompt::~ConnectionPrompt() {
    Stop();
}

void ConnectionPrompt::Tick(HWND owner, AddressTools& tools) {
    m_owner = owner;
    m_tools = &tools;
    for (TaskThread* const thread : {&m_deciding, &m_programs, &m_connection, &m_delivering}) {
        thread->RunCompletions();
    }
    m_questions.Tick();
}

void ConnectionPrompt::Stop() {
    m_delivering.Stop(kAnswerPatience);
    for (TaskThread* const thread : {&m_deciding, &m_programs, &m_connection}) {
        thread->Stop(std::chrono::milliseconds(0));
    }
}

bool ConnectionPrompt::IsReadyToAsk() {
    return IsTimeToAsk();
}

PromptAnswer ConnectionPrompt::Ask(const PromptQuestion& question) {
    return ConfirmationDialog(m_fonts.For(question.charset), *m_tools, question).Ask(m_owner);
}

}  // namespace brennvar
