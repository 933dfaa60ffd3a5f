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
    std::vector<std::pair<AddressTool, std::string>> asked;
};

}  // namespace brennvar::test
