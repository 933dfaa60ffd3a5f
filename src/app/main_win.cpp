// Entry of BrennvarGUI.exe.
#include "app/Program_win.h"
#include "base/SystemClock.h"
#include "base/Windows_win.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const brennvar::StopSignal neverStopped;  // waits on this thread are never cut short
    brennvar::SystemClock clock(neverStopped);
    return brennvar::RunProgram(clock);
}
