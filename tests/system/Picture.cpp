#include "Picture.h"

#include <cstdint>
#include <fstream>
#include <vector>

#include "Programs.h"
#include "base/Handles_win.h"

namespace brennvar::test {
namespace {

constexpr DWORD kPauseMs = 30;   // from one look to the next
constexpr UINT kPaintMs = 5000;  // a window that paints longer than that is not waited for

struct Pixels {
    BITMAPINFOHEADER format{};
    std::vector<std::uint8_t> bytes;  // rows of blue, green, red, filled to 4 bytes; the lowest row first
    friend bool operator==(const Pixels& a, const Pixels& b) { return a.bytes == b.bytes; }
};

Pixels ReadScreen(const RECT& place) {
    Pixels pixels;
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

bool WriteBitmap(const Pixels& pixels, const std::string& path) {
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

// A window with something to paint does it now.
BOOL CALLBACK PaintNow(HWND window, LPARAM) {
    DWORD_PTR ignored = 0;
    if (::IsWindowVisible(window)) {
        ::SendMessageTimeoutA(window, WM_PAINT, 0, 0, SMTO_NORMAL, kPaintMs, &ignored);
    }
    return TRUE;
}

BOOL CALLBACK PaintWithChildren(HWND window, LPARAM parameter) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process != static_cast<DWORD>(parameter)) return TRUE;
    PaintNow(window, 0);
    ::EnumChildWindows(window, PaintNow, 0);
    return TRUE;
}

struct PlaceSearch {
    HWND window;
    DWORD process;
    int count;
    RECT place;
};

BOOL CALLBACK AddPlace(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<PlaceSearch*>(parameter);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (window == search.window || process != search.process || !::IsWindowVisible(window)) return TRUE;
    const RECT place = PlaceOfWindow(window);
    if (::IsRectEmpty(&place)) return TRUE;
    ++search.count;
    ::UnionRect(&search.place, &search.place, &place);
    return TRUE;
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

RECT PlaceOfOthers(HWND window, int& count) {
    PlaceSearch search{.window = window, .process = 0, .count = 0, .place = {}};
    ::GetWindowThreadProcessId(window, &search.process);
    ::EnumWindows(AddPlace, reinterpret_cast<LPARAM>(&search));
    count = search.count;
    return search.place;
}

bool WritePicture(HWND window, const RECT& place, const std::string& path) {
    // Out of the way, or something is painted as under the mouse.
    ::SetCursorPos(::GetSystemMetrics(SM_CXSCREEN) / 2, ::GetSystemMetrics(SM_CYSCREEN) - 1);
    RaiseAgain(window);
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    Pixels pixels;
    const bool isAtRest = WaitUntil([&] {
        ::EnumWindows(PaintWithChildren, static_cast<LPARAM>(process));
        Pixels now = ReadScreen(place);
        const bool isSame = now == pixels;
        pixels = std::move(now);
        if (!isSame) ::Sleep(kPauseMs);
        return isSame;
    });
    return isAtRest && WriteBitmap(pixels, path);
}

}  // namespace brennvar::test
