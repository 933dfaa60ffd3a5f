#include "prompts/PromptWorld_win.h"

#include <memory>
#include <utility>

#include "base/Bytes.h"
#include "base/NetworkAddresses_win.h"
#include "base/VersionInfo_win.h"
#include "base/Windows_win.h"
#include "config/Folders.h"
#include "config/Ini_win.h"
#include "config/Settings.h"
#include "ipc/PipeWriteOnce.h"
#include "logs/Lookups.h"
#include "rules/ApplicationRules.h"

namespace brennvar {

WinPromptWorld::WinPromptWorld(std::string dataFolder, std::string installationFolder, PipeConnector& connector,
                               Clock& clock, Asker ask, ServiceState service)
    : m_dataFolder(std::move(dataFolder)),
      m_installationFolder(std::move(installationFolder)),
      m_connector(connector),
      m_clock(clock),
      m_pipes(connector, clock),
      m_ask(std::move(ask)),
      m_service(std::move(service)) {}

RuleAction WinPromptWorld::LookupAction(const std::string& path) {
    return LookupApplicationAction(RulesFilePath(m_dataFolder), m_clock, path);
}

std::optional<std::uint32_t> WinPromptWorld::Advice(const std::string& path) {
    return FindAdvice(m_dataFolder, path);
}

std::optional<std::string> WinPromptWorld::ResolveProcessPath(std::uint32_t processId) {
    // The waits for a service that is known to be missing would hold the windows up for seconds, for nothing.
    if (m_service && m_service() == PeerState::Missing) return std::nullopt;
    return m_pipes.ResolveProcessPath(processId);
}

std::string WinPromptWorld::HostName(Ipv4 address) {
    return FindHostName(m_dataFolder, m_clock.Today(), address);
}

std::string WinPromptWorld::FileDescription(const std::string& path) {
    return ReadFileDescription(path);
}

Ipv4 WinPromptWorld::LocalAddressFor(Ipv4 address) {
    return FindLocalAddressFor(address);
}

Language WinPromptWorld::LoadLanguage() {
    const std::string name = ReadLanguageName(CIni(SettingsFilePath(m_dataFolder)));
    return Language(std::make_unique<CIni>(LanguageFilePath(m_installationFolder, name)));
}

bool WinPromptWorld::IsReadyToAsk() {
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

PromptAnswer WinPromptWorld::Ask(const PromptQuestion& question) {
    return m_ask(question);
}

void WinPromptWorld::SendAnswer(const ConnectionPromptAnswer& answer) {
    // A service that is not there to take the answer has nothing to decide either; nobody is told.
    (void)PipeWriteOnce(m_connector, m_clock, kConfirmPipeName, RecordBytes(answer));
}

}  // namespace brennvar
