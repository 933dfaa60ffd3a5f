// What can be asked about an address or a host, wherever one is seen: the control center opens the tools
// (app/ToolWindows_win.h). User-interface thread only; nothing here waits.
#pragma once

#include <string>

#include "dialogs/RuleTools.h"

namespace brennvar {

enum class AddressTool { TraceRoute, WhoIs, Locate };

// Where an address is seen, a rule can be made for it as well.
class AddressTools : public RuleTools {
public:
    // Opens the tool with this text in its field, empty or not, and starts it when there is one. There is one
    // dialog of each kind: where it is open already it comes to the front, and takes the text unless it is at work.
    // Opens later than this call, when the handler that asks is over.
    virtual void OpenTool(AddressTool tool, const std::string& hostOrAddress) = 0;
};

}  // namespace brennvar
