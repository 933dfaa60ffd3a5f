#include "prompts/ConnectionPrompt_win.h"

#include <chrono>

#include "config/Folders_win.h"
#include "prompts/ConfirmationDialog_win.h"

namespace brennvar {
namespace {

// As long as the last commands get.
constexpr std::chrono::seconds kAnswerPatience{3};

}  // namespace

ConnectionPrompt::ConnectionPrompt(const CFonts& fonts, DeviceOpener& devices, const Clock& clock,
                                   const std::function<void()>& wake)
    : m_fonts(fonts),
      m_deciding(wake),
      m_programs(wake),
      m_connection(wake),
      m_delivering(wake),
      m_sources(GetDataFolder(), GetInstallationFolder(), m_decidingPipes, m_decidingWaits),
      m_facts(m_sources, {.deciding = m_deciding, .programs = m_programs, .connection = m_connection}, clock),
      m_questions(devices, m_facts, m_delivery, *this) {}

ConnectionPrompt::~ConnectionPrompt() {
    Stop();
}

void ConnectionPrompt::Tick(HWND owner) {
    m_owner = owner;
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
    // Their loops would lie below the question's: a menu would get the clicks on its buttons, and could not close
    // before it is answered; a window that is moved would stick to the mouse afterwards.
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    if (!::GetGUIThreadInfo(::GetCurrentThreadId(), &state)) return true;
    if ((state.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE | GUI_SYSTEMMENUMODE)) != 0) {
        ::EndMenu();
        return false;
    }
    if ((state.flags & GUI_INMOVESIZE) == 0) return true;
    // By the keyboard it could last for ever; the mouse button is released at some time.
    if (::GetAsyncKeyState(VK_LBUTTON) >= 0) ::PostMessageA(state.hwndMoveSize, WM_KEYDOWN, VK_ESCAPE, 0);
    return false;
}

PromptAnswer ConnectionPrompt::Ask(const PromptQuestion& question) {
    return ConfirmationDialog(m_fonts, question).Ask(m_owner);
}

}  // namespace brennvar
