// The user's choice of skin and language.
#pragma once

#include <string>

namespace brennvar {

// Names of folders, compared exactly.
struct ResourceChoice {
    std::string skin;
    std::string language;
    friend bool operator==(const ResourceChoice&, const ResourceChoice&) = default;
};

}  // namespace brennvar
