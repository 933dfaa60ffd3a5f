#include "app/ToolWindows_win.h"

#include <algorithm>

#include "config/ResourceIds.h"
#include "tools/TraceRouteDialog_win.h"
#include "tools/WhoIsDialog_win.h"
#include "views/AddressActions.h"

namespace brennvar {
namespace {

// Places of the two in the arrays.
static_assert(static_cast<std::size_t>(AddressTool::TraceRoute) == 0);
static_assert(static_cast<std::size_t>(AddressTool::WhoIs) == 1);

std::size_t IndexOf(AddressTool tool) {
    return static_cast<std::size_t>(tool);
}

}  // namespace

void ToolWindows::OpenTool(AddressTool tool, const std::string& hostOrAddress) {
    if (tool == AddressTool::Locate) {
        if (!hostOrAddress.empty()) m_openLink(LocateAddress(hostOrAddress));
        return;
    }
    m_wanted[IndexOf(tool)] = hostOrAddress;
    const int command = tool == AddressTool::TraceRoute ? IDM_TRACE_ROUTE : IDM_WHOIS;
    if (m_window) ::PostMessageA(m_window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

bool ToolWindows::OnCommand(int id) {
    if (id != IDM_TRACE_ROUTE && id != IDM_WHOIS) return false;
    if (!m_window) return true;
    const AddressTool tool = id == IDM_TRACE_ROUTE ? AddressTool::TraceRoute : AddressTool::WhoIs;
    const std::string text = std::exchange(m_wanted[IndexOf(tool)], {});
    ToolDialog& dialog = Dialog(tool);
    if (dialog.OpenNear(m_window)) dialog.StartWith(text);
    return true;
}

ToolDialog& ToolWindows::Dialog(AddressTool tool) {
    std::unique_ptr<ToolDialog>& dialog = m_dialogs[IndexOf(tool)];
    if (dialog) return *dialog;
    if (tool == AddressTool::TraceRoute) {
        dialog = std::make_unique<TraceRouteDialog>(m_fonts, m_language, *this);
    } else {
        dialog = std::make_unique<WhoIsDialog>(m_fonts, m_language, *this);
    }
    return *dialog;
}

bool ToolWindows::IsAnyOpen() const {
    return std::ranges::any_of(m_dialogs, [](const auto& dialog) { return dialog && dialog->IsOpen(); });
}

bool ToolWindows::Owns(HWND window) const {
    const HWND root = ::GetAncestor(window, GA_ROOTOWNER);
    return std::ranges::any_of(
        m_dialogs, [root](const auto& dialog) { return dialog && dialog->IsOpen() && dialog->Window() == root; });
}

void ToolWindows::CloseAll() {
    for (const auto& dialog : m_dialogs) {
        if (dialog && dialog->IsOpen()) ::SendMessageA(dialog->Window(), WM_CLOSE, 0, 0);
    }
}

}  // namespace brennvar
