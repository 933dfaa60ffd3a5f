#include "base/NetworkSignature.h"

namespace brennvar {

std::uint32_t NetworkSignature(std::span<const InterfaceAddress> addresses) {
    std::uint32_t sum = 0;
    for (const InterfaceAddress& entry : addresses) {
        if (entry.operationalStatus == kInterfaceOperational) sum += entry.address;
    }
    return sum;
}

}  // namespace brennvar
