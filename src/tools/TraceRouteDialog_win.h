// The dialog of the trace route tool. The trace itself is tools/TraceRoute.h.
#pragma once

#include "tools/ToolDialog_win.h"

namespace brennvar {

class TraceRouteDialog final : public ToolDialog {
public:
    static constexpr UINT kFinishedMessage = 4845;

    // Everything is borrowed for the life of the dialog.
    TraceRouteDialog(const CFonts& fonts, const Language& language, AddressTools& tools);
    [[nodiscard]] static ToolSetup Setup();

private:
    [[nodiscard]] ToolJob MakeJob(const std::string& text) override;
};

}  // namespace brennvar
