// What the editor of rules offers to be picked, and what it takes time to find out: as the editor sees it. The
// shell asks the system (advanced/RuleChoices_win.h). User-interface thread only; nothing here waits.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/Ipv4.h"

namespace brennvar {

class RuleChoices {
public:
    using Told = std::function<void(std::vector<std::string>)>;

    virtual ~RuleChoices() = default;
    // The paths of the programs that have connections now. May be told again, as more is known.
    virtual void FindPrograms(Told told) = 0;
    // The users of this machine, DOMAIN\name. Told once.
    virtual void FindUsers(Told told) = 0;
    // The IPv4 addresses of a host; none: the name was not found. One at a time.
    virtual void LookUp(const std::string& host, std::function<void(std::vector<Ipv4>)> told) = 0;
    // The host is told nothing of any more.
    virtual void StopLookUp() = 0;
    // Nor is anything else: who asked has gone.
    virtual void Forget() = 0;
};

}  // namespace brennvar
