// From the start of a process to its first painted window: the program given first against the one given second,
// started in turns. Prints the ratio of the medians.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "base/Handles_win.h"

namespace {

constexpr int kRounds = 21;
constexpr DWORD kPatience = 30000;  // ms

// Both programs show a white ground here, in the lower part of their window: the first page's list, which is made
// last. The desktop is of another colour.
constexpr POINT kWatched{900, 640};
constexpr COLORREF kPainted = RGB(255, 255, 255);

bool WaitForColour(bool painted) {
    const HDC screen = ::GetDC(nullptr);
    const DWORD start = ::GetTickCount();
    bool isThere = false;
    while (!isThere && ::GetTickCount() - start < kPatience) {
        isThere = (::GetPixel(screen, kWatched.x, kWatched.y) == kPainted) == painted;
        if (!isThere) ::Sleep(1);
    }
    ::ReleaseDC(nullptr, screen);
    return isThere;
}

// Milliseconds; nothing when the program did not come up.
std::optional<double> StartOnce(const std::string& program) {
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION information{};
    std::string commandLine = program;
    LARGE_INTEGER frequency;
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&before);
    if (!::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &information)) {
        return std::nullopt;
    }
    const brennvar::UniqueProcess process(information.hProcess);
    const brennvar::UniqueEvent thread(information.hThread);
    bool isUp = WaitForColour(true);
    ::QueryPerformanceCounter(&after);
    ::TerminateProcess(process.Get(), 0);
    ::WaitForSingleObject(process.Get(), kPatience);
    isUp = WaitForColour(false) && isUp;
    if (!isUp) return std::nullopt;
    return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: start_bench PROGRAM YARDSTICK\n");
        return 2;
    }
    std::vector<double> times[2];
    for (int round = 0; round <= kRounds; ++round) {
        for (int program = 0; program < 2; ++program) {
            const std::optional<double> time = StartOnce(arguments[1 + program]);
            if (!time) {
                std::fprintf(stderr, "%s did not show its window\n", arguments[1 + program]);
                return 1;
            }
            if (round > 0) times[program].push_back(*time);  // the first start reads the files
        }
    }
    const double ours = Median(times[0]);
    const double yardstick = Median(times[1]);
    std::fprintf(stderr, "%.1f ms against %.1f ms\n", ours, yardstick);
    std::printf("start %.3f\n", ours / yardstick);
    return 0;
}
