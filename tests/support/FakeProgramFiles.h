// Program files in memory, and a record of who looked at them.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "views/ProgramNames.h"

namespace brennvar::test {

class FakeProgramFiles final : public ProgramFiles {
public:
    std::map<std::string, FileStamp> stamps;
    std::map<std::string, std::string> descriptions;
    bool isBroken = false;  // every look into a file fails

    // "s" and "d" with the path, for each call since the last time.
    [[nodiscard]] std::string Looked() { return std::exchange(m_looked, {}); }

    [[nodiscard]] FileStamp Stamp(const std::string& path) const override {
        m_looked += "s" + path + " ";
        const auto at = stamps.find(path);
        return at == stamps.end() ? FileStamp{} : at->second;
    }
    [[nodiscard]] std::string Description(const std::string& path) const override {
        m_looked += "d" + path + " ";
        if (isBroken) throw std::runtime_error("the disk");
        const auto at = descriptions.find(path);
        return at == descriptions.end() ? std::string() : at->second;
    }

private:
    mutable std::string m_looked;
};

}  // namespace brennvar::test
