// What the details of a connection say.
#pragma once

#include <cstdint>
#include <string>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "views/ConnectionTable.h"

namespace brennvar {

// A row of the page by itself: it stays when the table has gone.
struct ConnectionTarget {
    ConnectionRow row;
    ConnectionProgram program;
    std::uint32_t age = 0;  // seconds
};

// What the service's logs know of its addresses; each may be empty. Of a listener only the local ones count.
struct AddressFacts {
    std::string localName;
    std::string remoteName;
    std::string localHardware;
    std::string remoteHardware;
};

// facts: null while they are looked up.
[[nodiscard]] DetailsSheet ConnectionDetails(const Language& language, const ConnectionTarget& target,
                                             const AddressFacts* facts);

}  // namespace brennvar
