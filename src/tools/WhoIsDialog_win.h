// "Who is it": asks the registries who owns an address or a host name, through the proxy of the options.
#pragma once

#include "tools/ToolDialog_win.h"

namespace brennvar {

class WhoIsDialog final : public ToolDialog {
public:
    static constexpr UINT kMessageFinished = 4844;

    // Everything is borrowed for the life of the dialog.
    WhoIsDialog(const CFonts& fonts, const Language& language, AddressTools& tools);
    [[nodiscard]] static ToolSetup Setup();

private:
    [[nodiscard]] ToolJob MakeJob(const std::string& text) override;
};

}  // namespace brennvar
