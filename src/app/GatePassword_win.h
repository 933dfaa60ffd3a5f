// The password gate as the commander sees it: its question opens over the control center.
#pragma once

#include <functional>
#include <utility>

#include "base/Windows_win.h"
#include "commands/AskPassword.h"
#include "security/SecurityPasswordGate_win.h"

namespace brennvar {

class GatePassword final : public AskPassword {
public:
    // The gate is borrowed; owner says which window it is at that time.
    GatePassword(SecurityPasswordGate& gate, std::function<HWND()> owner)
        : m_gate(gate), m_owner(std::move(owner)) {}
    void Ask(std::function<void()> allowed, std::function<void()> refused) override {
        m_gate.CheckSecurityPassword(
            {.owner = m_owner(), .action = std::move(allowed), .refused = std::move(refused)});
    }

private:
    SecurityPasswordGate& m_gate;
    const std::function<HWND()> m_owner;
};

}  // namespace brennvar
