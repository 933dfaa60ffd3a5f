// The processes of the same file in the same session, and which of them were started before this one.
#pragma once

#include <cstdint>
#include <vector>

#include "app/InstanceChoice.h"
#include "base/Handles_win.h"

namespace brennvar {

class WinEarlierStarts final : public EarlierStarts {
public:
    // What a window answers to the registered message openWindow when it has come to the front. Any other answer
    // is that of a window which knows nothing of it, or is leaving.
    static constexpr LRESULT kHasOpened = 0x4F504E44;

    explicit WinEarlierStarts(UINT openWindow);

    [[nodiscard]] bool IsAnyThere() override;
    [[nodiscard]] bool CallForward() override;
    // Ends those that were started before and are left; without effect on one that this user may not end.
    void End();

private:
    struct Process {
        UniqueProcess handle;
        DWORD id = 0;
        bool isEarlier = false;
    };
    const UINT m_openWindow;
    std::vector<Process> m_processes;  // that have not ended when they were last looked at
};

}  // namespace brennvar
