// What can be done about a connection or an address wherever one is seen: a rule is made of it, or it is told what
// decides about it. The control center opens the dialogs (app/RuleWindows_win.h). User-interface thread only; the
// dialogs open later than the call, when the handler that asks is over.
#pragma once

#include "base/TrafficFacts.h"

namespace brennvar {

class RuleTools {
public:
    virtual ~RuleTools() = default;
    // The editor of a new advanced rule, filled in with what is known.
    virtual void MakeRule(const TrafficFacts& facts) = 0;
    // Which rule decides, and what would.
    virtual void Explain(const TrafficFacts& facts) = 0;
};

}  // namespace brennvar
