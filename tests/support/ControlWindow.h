// What tests of controls need: a shown window with a ground that no skin has, its screen pixels, and skins with
// pictures of plain colours.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/FakeIni.h"
#include "support/TempFolder.h"
#include "ui/Look_win.h"
#include "ui/Paint_win.h"
#include "ui/Window_win.h"
#include "unit/image/ImageSamples.h"

namespace brennvar::test {

class ControlWindow final : public CWindow {
public:
    // Wherever it shows, the parent's ground shows.
    static constexpr COLORREF kGround = RGB(255, 0, 255);

    ControlWindow() {
        WindowSetup setup;
        setup.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN;
        setup.extendedStyle = WS_EX_CONTROLPARENT;
        setup.place = {0, 0, 500, 400};
        setup.className = "ControlWindow";
        (void)Create(setup);
        ::SetActiveWindow(Window());
    }

private:
    void OnPaint(HDC dc, const RECT& invalid) override { FillSolid(dc, invalid, kGround); }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM) override {
        if (message != WM_ERASEBKGND) return std::nullopt;
        FillSolid(reinterpret_cast<HDC>(wParam), ClientRect(), kGround);
        return TRUE;
    }
};

// A control as it stands on the screen, frame included, after it has painted what was invalid.
class Screenshot {
public:
    explicit Screenshot(HWND control) {
        ::RedrawWindow(control, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        RECT place{};
        ::GetWindowRect(control, &place);
        m_size = {WidthOf(place), HeightOf(place)};
        const HDC dc = ::GetWindowDC(control);
        const UniqueMemoryDc memory(::CreateCompatibleDC(dc));
        const UniqueBitmap bitmap(::CreateCompatibleBitmap(dc, m_size.cx, m_size.cy));
        {
            const CSelect select(memory.Get(), bitmap.Get());
            ::BitBlt(memory.Get(), 0, 0, m_size.cx, m_size.cy, dc, 0, 0, SRCCOPY);
        }
        ::ReleaseDC(control, dc);
        m_pixels.resize(static_cast<std::size_t>(m_size.cx * m_size.cy));
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(info.bmiHeader), m_size.cx, -m_size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        ::GetDIBits(memory.Get(), bitmap.Get(), 0, static_cast<UINT>(m_size.cy), m_pixels.data(), &info,
                    DIB_RGB_COLORS);
    }
    bool operator==(const Screenshot& other) const { return m_pixels == other.m_pixels; }
    [[nodiscard]] SIZE Size() const { return m_size; }
    // How many pixels of a place inside of it have this colour.
    [[nodiscard]] int Count(const RECT& place, COLORREF colour) const {
        const COLORREF pixel = RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour));
        int count = 0;
        for (LONG y = place.top; y < place.bottom; ++y) {
            for (LONG x = place.left; x < place.right; ++x) {
                if ((m_pixels.at(static_cast<std::size_t>(y * m_size.cx + x)) & 0xFFFFFF) == pixel) ++count;
            }
        }
        return count;
    }

private:
    SIZE m_size{};
    std::vector<COLORREF> m_pixels;
};

// An icon file of one picture: frames of plain colours side by side.
inline std::string StripFile(std::initializer_list<COLORREF> frames, unsigned frameWidth, unsigned height) {
    const auto width = static_cast<unsigned>(frames.size()) * frameWidth;
    std::string row;
    for (const COLORREF colour : frames) {
        const std::string pixel = {static_cast<char>(GetBValue(colour)), static_cast<char>(GetGValue(colour)),
                                   static_cast<char>(GetRValue(colour)), '\xFF'};
        for (unsigned x = 0; x < frameWidth; ++x) row += pixel;
    }
    // Pixels, then a mask of one bit for each, in rows of whole 32 bits.
    std::string bits = LittleEndian(40, 4) + LittleEndian(width, 4) + LittleEndian(2 * height, 4) +
                       LittleEndian(1, 2) + LittleEndian(32, 2) + std::string(24, '\0');
    for (unsigned y = 0; y < height; ++y) bits += row;
    bits += std::string((width + 31) / 32 * 4 * height, '\0');
    return LittleEndian(0, 2) + LittleEndian(1, 2) + LittleEndian(1, 2) + LittleEndian(width, 1) +
           LittleEndian(height, 1) + LittleEndian(0, 2) + LittleEndian(1, 2) + LittleEndian(32, 2) +
           LittleEndian(static_cast<std::uint32_t>(bits.size()), 4) + LittleEndian(22, 4) + bits;
}

// The default colours, and the pictures that have been written into its folder.
class TestSkin {
public:
    void Write(const std::string& file, const std::string& content) const { m_folder.Write(file, content); }
    [[nodiscard]] Look MakeLook() const {
        return Look(m_fonts, Skin(std::make_unique<FakeIni>(FakeIni::Values{}), m_folder.Path()));
    }

private:
    TempFolder m_folder;
    CFonts m_fonts;
};

}  // namespace brennvar::test
