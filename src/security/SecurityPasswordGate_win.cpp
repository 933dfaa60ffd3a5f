#include "security/SecurityPasswordGate_win.h"

#include <memory>
#include <utility>

#include "config/Folders_win.h"
#include "config/OptionTable.h"
#include "config/Options.h"

namespace brennvar {

void SecurityPasswordGate::CheckSecurityPassword(Request request) {
    if (m_isAsking) {
        if (request.refused) request.refused();
        return;
    }
    const auto kept = std::make_shared<Request>(std::move(request));
    m_parts.reads.Ask<std::string>(
        [&clock = m_parts.readsClock] {
            return OptionReader(GetDataFolder(), clock)
                .ReadOptionText(static_cast<std::uint32_t>(OptionId::Password));
        },
        [this, kept](const std::optional<std::string>& password) {
            OnPasswordRead(std::move(*kept), password.value_or(""));
        });
}

void SecurityPasswordGate::OnPasswordRead(Request request, const std::string& password) {
    if (password.empty() || (!m_isAsking && AskForPassword(request.owner))) {
        request.action();
    } else if (request.refused) {
        request.refused();
    }
}

bool SecurityPasswordGate::AskForPassword(HWND) {
    return false;
}

}  // namespace brennvar
