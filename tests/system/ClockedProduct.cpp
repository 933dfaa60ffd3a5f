// The program with a clock that a test moves.
#include "TestClock.h"
#include "app/Program_win.h"
#include "base/SystemClock.h"

namespace {

class MovedClock final : public brennvar::Clock {
public:
    [[nodiscard]] brennvar::FileTime UtcNow() const override {
        return m_clock.UtcNow() + static_cast<brennvar::FileTime>(m_offset.Get());
    }
    [[nodiscard]] brennvar::LocalDate Today() const override { return m_clock.Today(); }
    [[nodiscard]] std::chrono::milliseconds Elapsed() const override { return m_clock.Elapsed(); }
    bool Sleep(std::chrono::milliseconds duration) override { return m_clock.Sleep(duration); }

private:
    const brennvar::StopSignal m_neverStopped;
    brennvar::SystemClock m_clock{m_neverStopped};
    const brennvar::test::TestClockOffset m_offset;
};

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    MovedClock clock;
    return brennvar::RunProgram(clock);
}
