#include "commands/ProtectionModes.h"

#include <algorithm>
#include <string>
#include <utility>

namespace brennvar {

ProtectionModes::ProtectionModes(Clock& clock, const Language& language, Commander& commander, TaskQueue& reads,
                                 ReadMode read, ModeView& view)
    : m_clock(clock),
      m_language(language),
      m_commander(commander),
      m_view(view),
      m_stored(
          reads, [read = std::move(read)](const Request& request) { return read(request.pause); },
          [this](std::optional<ProtectionMode> mode, const Request& request) {
              OnRead(mode.value_or(ProtectionMode::Normal), request);
          }) {}

void ProtectionModes::Change(const ModeChange& change) {
    m_commander.AskFor(UserCommand::SetMode, [this, change] { OnAllowed(change); });
}

void ProtectionModes::OnAllowed(const ModeChange& change) {
    m_withdrawal.Withdraw();
    m_allowedSince.reset();
    if (change.mode == ProtectionMode::AllowAll) m_allowedSince = m_clock.Elapsed();
    ++m_choices;
    // The end of an earlier mode that is on its way is not meant for this one, even if it is lost.
    const auto arm = [change, now = m_clock.UtcNow(),
                      isOtherOver = m_timeout == ModeTimeout()](ModeTimeout& timeout) {
        if (isOtherOver) timeout = {};
        timeout.OnModeChosen(change, now);
    };
    arm(m_timeout);
    SendMode(UserCommand::SetMode, change.mode, arm);
}

void ProtectionModes::SendMode(UserCommand command, ProtectionMode mode, std::function<void(ModeTimeout&)> arm) {
    m_commander.Send(
        Batch(command, {.options = {{.id = OptionId::ProtectionMode, .number = static_cast<std::uint32_t>(mode)}},
                        .subject = m_language.GetText(ProtectionModeNotice(mode))}),
        [this, mode, number = m_choices, arm = std::move(arm)](bool wasThere) {
            // A service that has gone in the middle of the batch may have the mode nevertheless.
            const auto settle = [=, this](ProtectionMode stored) {
                if (wasThere || stored == mode) arm(m_heldTimeout);
                if (number == m_choices) m_timeout = m_heldTimeout;
            };
            Refresh({.pause = kWritingPause, .waiting = {settle}});
        },
        command == UserCommand::SetMode ? m_withdrawal.Signal() : nullptr);
}

void ProtectionModes::WithdrawLate() {
    if (!m_allowedSince || m_clock.Elapsed() - *m_allowedSince < Withdrawal::kDeliveryLimit) return;
    m_allowedSince.reset();
    m_withdrawal.Withdraw();
}

void ProtectionModes::Tick(bool isIdle) {
    if (isIdle) m_idleSince = m_clock.UtcNow();
    if (!m_stored.IsReading()) Refresh({});
}

void ProtectionModes::Read(Done done) {
    Refresh({.waiting = {std::move(done)}});
}

void ProtectionModes::Refresh(Request request) {
    // Who waits for the next reading goes on waiting.
    if (const std::optional<Request>& next = m_stored.Next()) {
        request.pause = std::max(request.pause, next->pause);
        request.waiting.insert(request.waiting.begin(), next->waiting.begin(), next->waiting.end());
    }
    m_stored.Refresh(std::move(request));
}

void ProtectionModes::OnRead(ProtectionMode stored, const Request& request) {
    ProtectionMode mode = ProtectionModeOf(static_cast<std::uint32_t>(stored));
    const bool isKnown = mode == stored;
    if (const auto idle = std::exchange(m_idleSince, std::nullopt)) {
        if (m_timeout.IsOver(mode, *idle)) {
            // Asked for again when it is lost: the mode would never end.
            m_timeout = {};
            mode = ProtectionMode::Normal;
            SendMode(UserCommand::EndTimedMode, mode, [](ModeTimeout& timeout) { timeout = {}; });
        }
        m_view.OnIdleMode(mode);
    }
    Show(mode);
    // Last: a menu that one of them opens is there until the user has chosen.
    for (const Done& done : request.waiting) done(isKnown ? mode : stored);
}

void ProtectionModes::Show(ProtectionMode mode) {
    const ModeDisplay display{.mode = mode, .until = m_timeout.ExpiryOf(mode)};
    if (display == std::exchange(m_display, display)) return;
    m_view.OnModeChanged();
}

}  // namespace brennvar
