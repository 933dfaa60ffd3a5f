// The network tools for pages that only show how they are offered.
#pragma once

#include <string>

#include "dialogs/AddressTools.h"

namespace brennvar::gallery {

class NoTools final : public AddressTools {
public:
    void OpenTool(AddressTool, const std::string&) override {}
    void MakeRule(const TrafficFacts&) override {}
    void Explain(const TrafficFacts&) override {}
};

}  // namespace brennvar::gallery
