// The skins and languages that the user may choose from, as a seam.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "config/ResourceChoice.h"

namespace brennvar {

class SkinsAndLanguages {
public:
    virtual ~SkinsAndLanguages() = default;
    // Names of folders, in the order in which they are offered.
    [[nodiscard]] virtual std::vector<std::string> Skins() const = 0;
    [[nodiscard]] virtual std::vector<std::string> Languages() const = 0;
    // As the settings have it.
    [[nodiscard]] virtual ResourceChoice Current() const = 0;
    // The user wants these instead of the current ones, or the same again. May ask, which pumps messages. False:
    // not now. lost: told later that the service could not be told, after all.
    virtual bool Apply(const ResourceChoice& current, const ResourceChoice& chosen, std::function<void()> lost) = 0;
};

}  // namespace brennvar
