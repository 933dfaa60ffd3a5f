// The end of a connection as the user or the options name it.
#pragma once

#include <cstdint>
#include <string>

namespace brennvar {

struct StreamEndpoint {
    std::string host;  // a name or a dotted address
    std::uint16_t port = 0;
};

}  // namespace brennvar
