#include "Picture.h"

#include <cstdint>
#include <fstream>
#include <vector>

#include "Desktop.h"
#include "Programs.h"
#include "base/Handles_win.h"

namespace brennvar::test {
namespace {

constexpr DWORD kPauseMs = 30;   // from one look to the next
constexpr UINT kPaintMs = 5000;  // a window that paints longer than that is not waited for

struct Screenshot {
    BITMAPINFOHEADER format{};
    std::vector<std::uint8_t> bytes;  // rows of blue, green, red, filled to 4 bytes; the lowest row first
    friend bool operator==(const Screenshot& a, const Screenshot& b) { return a.bytes == b.bytes; }
};

Screenshot ReadScreen(const RECT& place) {
    Screenshot pixels;
    pixels.format.biSize = sizeof pixels.format;
    pixels.format.biWidth = place.right - place.left;
    pixels.format.biHeight = place.bottom - place.top;
    pixels.format.biPlanes = 1;
    pixels.format.biBitCount = 24;
    const auto rowSize = (static_cast<std::size_t>(pixels.format.biWidth) * 3 + 3) / 4 * 4;
    pixels.bytes.resize(rowSize * static_cast<std::size_t>(pixels.format.biHeight));
    const HDC screen = ::GetDC(nullptr);
    const UniqueMemoryDc memory(::CreateCompatibleDC(screen));
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(screen, pixels.format.biWidth, pixels.format.biHeight));
    const HGDIOBJ before = ::SelectObject(memory.Get(), bitmap.Get());
    ::BitBlt(memory.Get(), 0, 0, pixels.format.biWidth, pixels.format.biHeight, screen, place.left, place.top,
             SRCCOPY);
    ::SelectObject(memory.Get(), before);
    BITMAPINFO info{};
    info.bmiHeader = pixels.format;
    ::GetDIBits(screen, bitmap.Get(), 0, static_cast<UINT>(pixels.format.biHeight), pixels.bytes.data(), &info,
                DIB_RGB_COLORS);
    ::ReleaseDC(nullptr, screen);
    return pixels;
}

bool WriteBitmap(const Screenshot& pixels, const std::string& path) {
    BITMAPFILEHEADER head{};
    head.bfType = 0x4D42;  // "BM"
    head.bfOffBits = sizeof head + sizeof pixels.format;
    head.bfSize = head.bfOffBits + static_cast<DWORD>(pixels.bytes.size());
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&head), sizeof head);
    file.write(reinterpret_cast<const char*>(&pixels.format), sizeof pixels.format);
    file.write(reinterpret_cast<const char*>(pixels.bytes.data()),
               static_cast<std::streamsize>(pixels.bytes.size()));
    return file.good();
}

// Windows with something to paint do it now.
void PaintAll(DWORD process) {
    const auto paint = [](HWND window) {
        DWORD_PTR ignored = 0;
        ::SendMessageTimeoutA(window, WM_PAINT, 0, 0, SMTO_NORMAL, kPaintMs, &ignored);
        return false;
    };
    (void)FindVisible(nullptr, [&](HWND window) {
        if (ProcessOf(window) != process) return false;
        paint(window);
        (void)FindVisible(window, paint);
        return false;
    });
}

// A topmost window may be shown below one that was activated while it opened: the display hears of both by itself.
void RaiseAgain(HWND window) {
    if ((::GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) == 0) return;
    for (const HWND after : {HWND_NOTOPMOST, HWND_TOPMOST}) {
        ::SetWindowPos(window, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

}  // namespace

RECT PlaceOfWindow(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    // What is beside the screen has no pixels.
    const RECT screen{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    ::IntersectRect(&place, &place, &screen);
    return place;
}

RECT PlaceOfOthers(HWND window) {
    RECT all{};
    for (const HWND other : OtherWindows(window)) {
        const RECT place = PlaceOfWindow(other);
        ::UnionRect(&all, &all, &place);
    }
    return all;
}

bool WritePicture(HWND window, const RECT& place, const std::string& path) {
    // Out of the way, or something is painted as under the mouse.
    ::SetCursorPos(::GetSystemMetrics(SM_CXSCREEN) / 2, ::GetSystemMetrics(SM_CYSCREEN) - 1);
    RaiseAgain(window);
    const DWORD process = ProcessOf(window);
    Screenshot pixels;
    const bool isAtRest = WaitUntil([&] {
        PaintAll(process);
        Screenshot now = ReadScreen(place);
        const bool isSame = now == pixels;
        pixels = std::move(now);
        if (!isSame) ::Sleep(kPauseMs);
        return isSame;
    });
    return isAtRest && WriteBitmap(pixels, path);
}

}  // namespace brennvar::test
