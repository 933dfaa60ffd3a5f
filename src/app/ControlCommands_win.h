// The commands of the control center that are neither pages nor windows: what a button of an option page or an item
// of the tray menu asks of the service. User-interface thread only.
#pragma once

#include <functional>
#include <utility>

#include "app/Session_win.h"
#include "base/Windows_win.h"

namespace brennvar {

class ControlCommands {
public:
    // The session is borrowed. onLogsDeleted: the command that deletes logs has been delivered or given up.
    ControlCommands(Session& session, std::function<void()> onLogsDeleted)
        : m_session(session), m_onLogsDeleted(std::move(onLogsDeleted)) {}

    // True for a command of these. The window owns what the command asks; one that would open a dialog is left
    // undone while another one is open.
    bool OnCommand(HWND window, int id);

private:
    // What the table says of the command: asks the user first, then for the password, and sends it.
    void Send(HWND window, UserCommand command);
    void UpdateSignatures(HWND window);
    void DeleteLogs(HWND window);

    Session& m_session;
    const std::function<void()> m_onLogsDeleted;
};

}  // namespace brennvar
