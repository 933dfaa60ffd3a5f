// The network tools where only what they are asked counts.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "dialogs/AddressTools.h"

namespace brennvar::test {

class AskedTools final : public AddressTools {
public:
    void OpenTool(AddressTool tool, const std::string& address) override { asked.emplace_back(tool, address); }
    void MakeRule(const TrafficFacts& facts) override { made.push_back(facts.remoteAddress); }
    void Explain(const TrafficFacts& facts) override { explained.push_back(facts.remoteAddress); }
    std::vector<std::pair<AddressTool, std::string>> asked;
    // Remote addresses of what was told.
    std::vector<Ipv4> made;
    std::vector<Ipv4> explained;
};

}  // namespace brennvar::test
