// Sees what is still in memory when it is given back: the test programs look into
// every block of the heap that is freed.
#pragma once

#include <string_view>
#include <vector>

namespace brennvar::test {

// One at a time; the texts are borrowed, and longer than what a std::string keeps in itself.
class FreedMemory {
public:
    explicit FreedMemory(std::vector<std::string_view> secrets);
    FreedMemory(const FreedMemory&) = delete;
    FreedMemory& operator=(const FreedMemory&) = delete;
    ~FreedMemory();

    // Blocks that have been freed with one of the texts in them, so far.
    [[nodiscard]] int Count() const;

private:
    const std::vector<std::string_view> m_secrets;
};

}  // namespace brennvar::test
