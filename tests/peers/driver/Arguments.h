// What the driver is told: "key=value", the value with "%41" for bytes that have a meaning to a shell, to Wine or
// in a command line. A key may come several times.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brennvar::peers {

class Arguments {
public:
    Arguments(int count, char** words);

    [[nodiscard]] std::vector<std::string> All(std::string_view key) const;
    [[nodiscard]] bool Has(std::string_view key) const { return !All(key).empty(); }
    // The first of this key.
    [[nodiscard]] std::string Text(std::string_view key, std::string fallback = {}) const;
    // What is no number is 0.
    [[nodiscard]] std::uint32_t Number(std::string_view key, std::uint32_t fallback) const;

private:
    std::vector<std::pair<std::string, std::string>> m_given;
};

// One line of printed text: "%0A" and its like for what would not be letters of ASCII in it.
[[nodiscard]] std::string Printable(std::string_view bytes);

}  // namespace brennvar::peers
