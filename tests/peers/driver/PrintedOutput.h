// What a tool shows in its list, kept: it may take lines back.
#pragma once

#include <string>
#include <vector>

#include "Arguments.h"
#include "tools/ToolOutput.h"

#include <cstdio>

namespace brennvar::peers {

class PrintedOutput final : public ToolOutput {
public:
    void Print(const std::string& line) override { m_lines.push_back(line); }
    void Clear() override { m_lines.clear(); }

    [[nodiscard]] std::vector<std::string>& Lines() { return m_lines; }
    // Everything that is shown in the end, each as "line: ...".
    void Flush() const {
        for (const std::string& line : m_lines) (void)std::printf("line: %s\n", Printable(line).c_str());
    }

private:
    std::vector<std::string> m_lines;
};

}  // namespace brennvar::peers
