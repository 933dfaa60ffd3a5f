// Entry of BrennvarGUI.exe.
#include <exception>

#include "app/Program_win.h"
#include "base/Hardening_win.h"
#include "base/SystemClock.h"
#include "base/Windows_win.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    constexpr int kFailed = 1;
    brennvar::HardenProcess();
    try {
        const brennvar::StopSignal neverStopped;  // waits on this thread are never cut short
        brennvar::SystemClock clock(neverStopped);
        return brennvar::RunProgram(clock);
    } catch (const std::exception& failure) {
        brennvar::TellFailedStart(failure.what());
    }
    return kFailed;
}
