// Whole steps out of what a mouse wheel says. Fine wheels send parts of a notch; what does not make a step yet is
// kept for the next part.
#pragma once

namespace brennvar {

class WheelSteps {
public:
    static constexpr int kNotch = 120;  // WHEEL_DELTA of Windows

    // Steps in the direction of delta.
    [[nodiscard]] int Turn(int delta, int stepsPerNotch) {
        m_rest += delta * stepsPerNotch;
        const int steps = m_rest / kNotch;
        m_rest -= steps * kNotch;
        return steps;
    }

private:
    int m_rest = 0;
};

}  // namespace brennvar
