// The owner of a page that stands alone.
#pragma once

#include <string>

#include "lists/PageOwner.h"

namespace brennvar {

class NoOwner final : public PageOwner {
    void OpenPageAt(int, const std::string&) override {}
    void Notify(const std::string&, const std::string&) override {}
    void OpenTool(AddressTool, const std::string&) override {}
    void MakeRule(const TrafficFacts&) override {}
    void Explain(const TrafficFacts&) override {}
};

}  // namespace brennvar
