// The machine's own addresses, and whether they have changed, as a seam: tests replace it.
#pragma once

#include <vector>

#include "base/NetworkSignature.h"

namespace brennvar {

class OwnAddresses {
public:
    virtual ~OwnAddresses() = default;
    // Every address with the status of its interface; none when they cannot be read.
    [[nodiscard]] virtual std::vector<InterfaceAddress> Read() = 0;
    // The system has reported a change since the last call. Costs next to nothing, so it may be asked often. False
    // as well where the system cannot report any.
    [[nodiscard]] virtual bool HaveChanged() = 0;
};

}  // namespace brennvar
