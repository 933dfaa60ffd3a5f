#include "commands/ProtectionModes.h"

#include <algorithm>
#include <string>
#include <utility>

#include "config/OptionTable.h"

namespace brennvar {

void ProtectionModes::Change(const ModeChange& change) {
    m_parts.checkPassword([this, change] { OnAllowed(change); });
}

void ProtectionModes::OnAllowed(const ModeChange& change) {
    m_timeout.OnModeChosen(change, m_parts.clock.UtcNow());
    SendMode(change.mode, true);
}

void ProtectionModes::SendMode(ProtectionMode mode, bool withEvent) {
    // Copies: the task runs on another thread.
    std::string title;
    std::string subject;
    if (withEvent) {
        title = m_parts.language.GetText(306, "Security level changed");
        subject = m_parts.language.GetText(ProtectionModeNotice(mode));
    }
    m_parts.send(
        [=](CommandPipe& pipe) {
            pipe.CMD_SET_OPTION(static_cast<std::uint32_t>(OptionId::ProtectionMode),
                                static_cast<std::uint32_t>(mode));
            pipe.CMD_RELOAD_ADVANCED_RULES();
            if (withEvent) pipe.CMD_EVENT_REPORT(title, subject, 0, "");
        },
        [this] { StartReading(Parts::When::WhenWritten); });
}

void ProtectionModes::Tick(bool isIdle) {
    if (isIdle) m_idleSince = m_parts.clock.UtcNow();
    if (!m_isReading) StartReading(Parts::When::Now);
}

void ProtectionModes::Read(Done done) {
    m_waiting.push_back(std::move(done));
    StartReading(Parts::When::Now);
}

void ProtectionModes::StartReading(Parts::When when) {
    if (m_isReading) {
        m_nextReading = std::max(m_nextReading.value_or(when), when);
        return;
    }
    m_isReading = true;
    m_parts.read(when,
                 [this, waiting = std::exchange(m_waiting, {})](ProtectionMode mode) { OnRead(mode, waiting); });
}

void ProtectionModes::OnRead(ProtectionMode mode, const std::vector<Done>& waiting) {
    m_isReading = false;
    if (const auto idle = std::exchange(m_idleSince, std::nullopt)) {
        if (m_timeout.IsOver(mode, *idle)) {
            m_timeout.Clear();
            mode = ProtectionMode::Normal;
            SendMode(mode, false);
        }
        m_parts.idleModeRead(mode);
    }
    Show(mode);
    if (const auto when = std::exchange(m_nextReading, std::nullopt)) StartReading(*when);
    // Last: a menu that one of them opens is there until the user has chosen.
    for (const Done& done : waiting) done(mode);
}

void ProtectionModes::Show(ProtectionMode mode) {
    const ModeDisplay display{.mode = mode, .until = m_timeout.ExpiryOf(mode)};
    if (display == std::exchange(m_display, display)) return;
    m_parts.changed();
}

}  // namespace brennvar
