// Memory that is used up at a moment of the test's choice: one allocation by "new" of this thread fails, and those
// before and after it do not. A test that counts the moment up from the first allocation finds each of them.
#pragma once

#include <new>

namespace brennvar::test {

// From now on each allocation of this thread fails, until it ends.
void UseMemoryUp();

class FailingMemory {
public:
    // So many allocations inside Run succeed before the one that fails.
    explicit FailingMemory(int before) : m_left(before) {}

    // Does the step, and drops the std::bad_alloc that leaves it, as whoever calls it in the program does.
    template <class Step>
    void Run(const Step& step) {
        Begin();
        try {
            step();
        } catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch): what has become of it, the test looks at
        }
        End();
    }
    [[nodiscard]] bool HasFailed() const { return m_left < 0; }

private:
    void Begin() const;
    void End();

    int m_left;
};

}  // namespace brennvar::test
