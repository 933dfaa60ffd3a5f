// The skins and languages in the folder of the program, and what a choice of the user sets in motion.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "config/SkinsAndLanguages.h"

namespace brennvar {

class InstalledResources final : public SkinsAndLanguages {
public:
    using ApplyChoice = std::function<bool(const ResourceChoice& current, const ResourceChoice& chosen,
                                           std::function<void()> lost)>;
    explicit InstalledResources(ApplyChoice apply) : m_apply(std::move(apply)) {}
    [[nodiscard]] std::vector<std::string> Skins() const override;
    [[nodiscard]] std::vector<std::string> Languages() const override;
    [[nodiscard]] ResourceChoice Current() const override;
    bool Apply(const ResourceChoice& current, const ResourceChoice& chosen, std::function<void()> lost) override {
        return m_apply(current, chosen, std::move(lost));
    }

private:
    const ApplyChoice m_apply;
};

}  // namespace brennvar
