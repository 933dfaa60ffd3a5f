// Finds the texts for the user in C++ sources, without compiling them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brennvar::test {

struct FoundText {
    int number = 0;
    std::string english;
    int line = 0;
    friend bool operator==(const FoundText&, const FoundText&) = default;
};

struct ScanResult {
    std::vector<FoundText> texts;
    // "line N: ..." for each place that looks like a text but cannot be read.
    std::vector<std::string> faults;
};

// Reads GetText(N, "..."), Text{N, "..."}, Text(N, "...") and Text name{N, "..."}, with adjacent literals joined
// and escapes resolved; what stands behind // does not count. Text{} is no text, and GetText(x) without a literal
// only hands one on that stands elsewhere. Other ways to write a text, with a comment in it or a raw literal, are
// faults.
[[nodiscard]] ScanResult ScanTexts(std::string_view source);

}  // namespace brennvar::test
